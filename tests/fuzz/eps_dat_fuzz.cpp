// eps.dat over any text: read, every key looked up and its EPS read.

#include "fuzz_support.h"
#include "halvard/fundamentals/eps_store.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const auto file = fuzz::ScratchFile("eps.dat", fuzz::Text(data, size));
  fundamentals::EPSStore store;
  fuzz::Refusable([&] {
    store.ReadEPSData(file);
    for (const auto& record : store.records()) {
      double eps = 0;
      store.GetEPS(record.key, eps);
      store.CheckExists(record.key);
    }
  });
  return 0;
}
