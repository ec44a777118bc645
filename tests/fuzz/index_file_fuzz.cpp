// The index-file loader over any file text.

#include <memory>

#include "fuzz_support.h"
#include "halvard/data/file_parser.h"
#include "halvard/settings/config.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  static auto series = std::make_unique<data::PriceSeries>();
  settings::Config config;
  const auto file = fuzz::ScratchFile("^IXIC.txt", fuzz::Text(data, size));
  fuzz::Refusable([&] { data::LoadIndexFile(*series, file.string(), config); });
  return 0;
}
