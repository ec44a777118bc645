#pragma once
// What the information page reads of a symbol, in one value: GetStockData's fields, each starting
// as given, since it leaves some of them alone (the name of a row without one, the ranks and the
// exchange of a symbol without a row).

#include <string>

#include "halvard/fundamentals/stock_data_store.h"

namespace halvard::test {

// Every field has an initializer, so a test presets only the fields it names.
struct StockInfo {
  std::string description = {}, industry = {}, exchange = {}, name = {};
  double epsRank = 0, rsRank = 0;
};

inline StockInfo ReadStockInfo(fundamentals::StockDataStore& store, const std::string& symbol,
                               StockInfo info = {}) {
  store.GetStockData(symbol, info.description, info.epsRank, info.rsRank, info.industry,
                     info.exchange, info.name);
  return info;
}

}  // namespace halvard::test
