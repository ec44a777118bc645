#pragma once
// Today's date on this machine's local calendar, as a day count from 12/30/1899.

namespace halvard::platform {

double Today();

}  // namespace halvard::platform
