// booldb.dat over any text: read, then every record browsed as the window shows it.

#include "fuzz_support.h"
#include "halvard/tools/boolean_db.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const auto file = fuzz::ScratchFile("booldb.dat", fuzz::Text(data, size));
  tools::BooleanDB db;
  fuzz::Refusable([&] { db.ReadFile(file, false); });
  for (int k = 0; k < db.count(); ++k) {
    db.setPosition(k);
    std::string first, second, operation, result;
    fuzz::Refusable([&] { db.getCurrent(first, second, operation, result); });
    db.StatusRecordText();
    db.StatusCountText();
  }
  return 0;
}
