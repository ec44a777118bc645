#include "halvard/runs/stock_info.h"

#include "halvard/data/symbol_name.h"
#include "halvard/platform/number_text.h"

namespace halvard::runs {

std::optional<StockInfo> ReadStockInfo(Session& s, const std::string& symbol) {
  data::RequireSymbolName(symbol);
  fundamentals::StockDataStore& db = s.stockDb(Session::Access::kRead);
  if (!db.isOpen()) return std::nullopt;
  StockInfo info;
  db.GetStockData(symbol, info.summary, info.epsRank, info.rsRank, info.industry, info.exchange,
                  info.name);
  return info;
}

std::string StockInfoText(const StockInfo& info) {
  using platform::FormatGeneral;
  return (info.name.empty() ? std::string("Company") : info.name) + "\r\n" +
         "Exchange : " + info.exchange + "\r\n" + "Industry : " + info.industry + "\r\n" +
         "Business Summary : " + info.summary + "\r\n" +
         "EPS Rank : " + FormatGeneral(info.epsRank) + "\r\n" +
         "RS Rank : " + FormatGeneral(info.rsRank) + "\r\n";
}

}  // namespace halvard::runs
