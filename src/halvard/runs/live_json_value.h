#pragma once
// The live report's document as a value, so the daily report can hold it whole; json_fields'
// JsonText is the one way documents are turned into text.

#include <nlohmann/json.hpp>
#include <string>

#include "halvard/runs/live_report.h"

namespace halvard::runs {

nlohmann::ordered_json LiveJsonValue(const LiveReport& report);

}  // namespace halvard::runs
