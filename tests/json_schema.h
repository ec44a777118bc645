#pragma once
// The JSON documents' fields as the README documents them, and a check of a document against
// them: every documented field present with its type, no field that is not documented.
//
// A schema is itself JSON: an object's fields map to their schema (a name ending in "?" may be
// missing), an array holds the schema of its elements, and a text names a type: "string",
// "number", "integer", "boolean", "date" (yyyy-mm-dd) or "string|null".

#include <nlohmann/json.hpp>
#include <string>

namespace halvard::test {

// "" when the document fits; otherwise one line per problem, naming the field's path.
std::string SchemaProblems(const nlohmann::json& document, const nlohmann::json& schema);

// live --json (and "report" in a daily report's .json).
nlohmann::json LiveReportSchema();
// The .json of a daily report.
nlohmann::json DailyReportSchema();

}  // namespace halvard::test
