// The screener service's answer over any body.

#include "fuzz_support.h"
#include "halvard/screener/screen_query.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  fuzz::Refusable([&] { screener::ParseScreenAnswer(fuzz::Text(data, size)); });
  return 0;
}
