// The index-file loader over any file text, held in memory as the loader parses it.

#include <memory>

#include "fuzz_support.h"
#include "halvard/data/file_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  static auto series = std::make_unique<data::PriceSeries>();
  fuzz::Refusable([&] { data::LoadIndexText(*series, fuzz::Text(data, size), "^IXIC.txt"); });
  return 0;
}
