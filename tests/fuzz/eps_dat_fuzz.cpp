// eps.dat over any text: read, every key looked up and its EPS read, up to the first EPS refused
// (every later refusal takes the same path).

#include "fuzz_support.h"
#include "halvard/fundamentals/eps_store.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  fundamentals::EPSStore store;
  store.ParseEPSData(fuzz::Text(data, size), "eps.dat");
  for (const auto& record : store.records()) {
    double eps = 0;
    store.CheckExists(record.key);
    if (!fuzz::Refusable([&] { store.GetEPS(record.key, eps); })) break;
  }
  return 0;
}
