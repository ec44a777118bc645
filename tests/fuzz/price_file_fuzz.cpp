// The price-file loader over any file text.

#include <memory>

#include "fuzz_support.h"
#include "halvard/data/file_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  static auto series = std::make_unique<data::PriceSeries>();
  const auto file = fuzz::ScratchFile("FUZZ.txt", fuzz::Text(data, size));
  fuzz::Refusable([&] { data::LoadStockFile(*series, file.string()); });
  return 0;
}
