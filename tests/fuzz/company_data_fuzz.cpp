// The quotes line and the profile page over any body, stored into a stock database beside a
// sentinel row that no answer may change.

#include <cstdlib>

#include "fuzz_support.h"
#include "halvard/fundamentals/stock_data_store.h"

namespace {

std::string SentinelRow(halvard::fundamentals::StockDataStore& db) {
  std::string description, industry, exchange, name;
  double epsRank = 0, rsRank = 0;
  db.GetStockData("KEEP", description, epsRank, rsRank, industry, exchange, name);
  return description + "|" + industry + "|" + exchange + "|" + name + "|" +
         std::to_string(epsRank) + "|" + std::to_string(rsRank);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  static fundamentals::StockDataStore* db = [] {
    auto* store = new fundamentals::StockDataStore;
    const auto file = fuzz::ScratchFolder() / "stockdata.mdb";
    std::filesystem::remove(file);
    store->Init(file);
    store->SetStockData("KEEP", "sentinel", 11, 22, "Ind", "NYSE", "Keep Co", 1, 2, 3);
    return store;
  }();
  static const std::string sentinel = SentinelRow(*db);
  fuzz::FixedAnswer answer{std::string(fuzz::Text(data, size))};
  db->UseServices({&answer, "127.0.0.1", "127.0.0.1"});
  fuzz::Refusable([&] { db->getDataForStock("FUZZ"); });
  if (SentinelRow(*db) != sentinel) abort();  // an answer reached another stock's row
  return 0;
}
