#pragma once
// Inside the library only (the JSON library is not part of its interface): the live report's
// document as a value, so the daily report can hold it whole, and the one way documents are
// turned into text.

#include <nlohmann/json.hpp>
#include <string>

#include "halvard/runs/live_report.h"

namespace halvard::runs {

nlohmann::ordered_json LiveJsonValue(const LiveReport& report);

// The document on one line; text that is not UTF-8 is a halvard::Error saying so.
std::string JsonText(const nlohmann::ordered_json& document);

}  // namespace halvard::runs
