// A watch list over any file text, read every way the program reads lists.

#include "fuzz_support.h"
#include "halvard/data/watch_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const std::string_view text = fuzz::Text(data, size);
  fuzz::Refusable([&] { data::ParseWatchList(text, "fuzz.inc", data::Quotes::kKeep); });
  fuzz::Refusable([&] {
    data::WatchListText(
        data::ParseWatchList(text, "fuzz.inc", data::Quotes::kStrip, data::Names::kSymbols));
  });
  return 0;
}
