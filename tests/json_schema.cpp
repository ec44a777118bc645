#include "json_schema.h"

#include <cctype>

namespace halvard::test {
namespace {

using nlohmann::json;

bool IsSchemaIsoDate(const json& value) {
  if (!value.is_string()) return false;
  const std::string text = value.get<std::string>();
  if (text.size() != 10) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool dash = i == 4 || i == 7;
    if (dash ? text[i] != '-' : !std::isdigit(static_cast<unsigned char>(text[i]))) return false;
  }
  return true;
}

bool FitsSchemaType(const json& value, const std::string& type) {
  if (type == "string") return value.is_string();
  if (type == "number") return value.is_number();
  if (type == "integer") return value.is_number_integer();
  if (type == "boolean") return value.is_boolean();
  if (type == "date") return IsSchemaIsoDate(value);
  if (type == "string|null") return value.is_string() || value.is_null();
  return false;
}

void CheckAgainstSchema(const json& value, const json& schema, const std::string& path,
                        std::string& out) {
  if (schema.is_string()) {
    if (!FitsSchemaType(value, schema.get<std::string>())) {
      out += path + ": " + value.dump() + " is not " + schema.get<std::string>() + "\n";
    }
  } else if (schema.is_array()) {
    if (!value.is_array()) {
      out += path + ": not an array\n";
      return;
    }
    for (size_t i = 0; i < value.size(); ++i) {
      CheckAgainstSchema(value[i], schema[0], path + "[" + std::to_string(i) + "]", out);
    }
  } else {
    if (!value.is_object()) {
      out += path + ": not an object\n";
      return;
    }
    for (const auto& [key, fieldSchema] : schema.items()) {
      const bool optional = key.back() == '?';
      const std::string name = optional ? key.substr(0, key.size() - 1) : key;
      if (value.contains(name)) {
        CheckAgainstSchema(value[name], fieldSchema, path + "." + name, out);
      } else if (!optional) {
        out += path + "." + name + ": missing\n";
      }
    }
    for (const auto& [key, field] : value.items()) {
      if (!schema.contains(key) && !schema.contains(key + "?")) {
        out += path + "." + key + ": not documented\n";
      }
    }
  }
}

}  // namespace

std::string SchemaProblems(const json& document, const json& schema) {
  std::string out;
  CheckAgainstSchema(document, schema, "$", out);
  return out;
}

json LiveReportSchema() {
  return json::parse(R"({
    "list": "string", "date": "date",
    "stopLoss": {"start": "number", "stop": "number", "step": "number"},
    "rsDays": {"start": "integer", "stop": "integer", "step": "integer"},
    "passes": [{
      "date": "date", "list": "string", "stopLoss": "number", "rsDays": "integer",
      "rsCheck": "boolean", "unusualVolumeCheck": "boolean", "buyMode": "string",
      "rows": [{"symbol": "string", "action": "string", "newestDate?": "date",
                "signalDate?": "date", "stopBuy?": "number", "stopLoss?": "number"}],
      "buyList": ["string"]
    }]
  })");
}

json DailyReportSchema() {
  json schema = json::parse(R"({
    "list": "string", "date": "date",
    "download": {"done": "boolean", "reason?": "string"},
    "checked": "integer", "stale": "integer", "failures": ["string"]
  })");
  schema["report"] = LiveReportSchema();
  return schema;
}

}  // namespace halvard::test
