#include "halvard/runs/json_fields.h"

#include <cstdio>

#include "halvard/platform/date_text.h"

namespace halvard::runs {

std::string IsoDate(double serial) {
  const platform::CivilDate d = platform::CivilFromSerial(serial);
  char text[48];  // room for any year the compiler can imagine: no truncation warning
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", d.year, d.month, d.day);
  return text;
}

}  // namespace halvard::runs
