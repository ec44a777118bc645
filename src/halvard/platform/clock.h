#pragma once
// Today's date on this machine's local calendar, as a day count from 12/30/1899, and the
// present moment in the same count (the time of day as the fraction).

namespace halvard::platform {

double Today();
double Now();

}  // namespace halvard::platform
