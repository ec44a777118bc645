#pragma once
// How the JSON documents of the program write their values: dates as ISO text (2017-12-29),
// numbers as JSON numbers (never as the reports' formatted text).

#include <string>

namespace halvard::runs {

// The day of a serial date as yyyy-mm-dd; its time of day is dropped.
std::string IsoDate(double serial);

}  // namespace halvard::runs
