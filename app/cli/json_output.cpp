#include "json_output.h"

#include <iostream>

namespace halvard::cli {

void AddJsonFlag(Command& command, bool& json) {
  command.Flag("--json", json, "Print one JSON document instead of the text report");
}

void PrintJson(const runs::JsonDocument& document) {
  std::cout << runs::JsonText(document) << "\n" << std::flush;
}

}  // namespace halvard::cli
