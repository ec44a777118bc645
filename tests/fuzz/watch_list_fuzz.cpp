// A watch list over any file text, read both ways the program reads lists.

#include "fuzz_support.h"
#include "halvard/data/watch_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const auto file = fuzz::ScratchFile("fuzz.inc", fuzz::Text(data, size));
  fuzz::Refusable([&] { data::ReadWatchList(file, data::Quotes::kKeep); });
  fuzz::Refusable([&] { data::WatchListText(data::ReadWatchList(file, data::Quotes::kStrip)); });
  return 0;
}
