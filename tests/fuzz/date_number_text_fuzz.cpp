// Dates and numbers as the files and settings write them: any text parsed, and every number
// read written back in the settings' form, which must read back as the same number.

#include <cmath>
#include <cstdlib>

#include "fuzz_support.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard::platform;
  const std::string_view text = halvard::fuzz::Text(data, size);
  if (const auto date = ParseDate(text)) FormatShortDate(*date);
  if (const auto moment = ParseDateTime(text)) FormatDateTime(*moment);
  ParseWholeNumber(text);
  if (const auto number = ParseDouble(text); number && std::isfinite(*number)) {
    FormatGeneral(*number);
    if (ParseDouble(FormatRoundTrip(*number)) != *number) abort();
  }
  return 0;
}
