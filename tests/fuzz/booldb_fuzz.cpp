// booldb.dat over any text: read, then the records browsed as the window shows them, up to the
// first one refused (every later refusal takes the same path, and its exception costs more than
// the rest of the input).

#include "fuzz_support.h"
#include "halvard/tools/boolean_db.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  tools::BooleanDB db;
  db.ReadText(fuzz::Text(data, size), "booldb.dat");
  for (int k = 0; k < db.count(); ++k) {
    db.setPosition(k);
    std::string first, second, operation, result;
    const bool shown = fuzz::Refusable([&] { db.getCurrent(first, second, operation, result); });
    db.StatusRecordText();
    db.StatusCountText();
    if (!shown) break;
  }
  return 0;
}
