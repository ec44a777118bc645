#pragma once
// --json on the commands that report: one JSON document on stdout instead of the text, made by
// the library from the same values (halvard/runs/report_json.h).

#include "command_line.h"
#include "halvard/runs/json_fields.h"

namespace halvard::cli {

void AddJsonFlag(Command& command, bool& json);

// The document as one line on stdout.
void PrintJson(const runs::JsonDocument& document);

}  // namespace halvard::cli
