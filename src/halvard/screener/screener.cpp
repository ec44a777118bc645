#include "halvard/screener/screener.h"

#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/platform/text.h"
#include "halvard/runs/stock_walk.h"
#include "halvard/screener/criteria_table.h"
#include "halvard/screener/local_screen.h"
#include "halvard/screener/service_screen.h"

namespace halvard::screener {

ScreenResult ScreenWithService(const settings::ServiceSettings& services, const ScreenCriteria& c,
                               platform::Progress& progress) {
  CheckCriteria(c);
  if (platform::TrimSpaces(services.screenerHost).empty()) {
    throw UsageError(
        "no screener service is set ([Services] Screener Host); screen the local data instead");
  }
  // A result of many pages asks the same host again and again: the pause of the company-data
  // runs keeps it polite.
  const auto http = fundamentals::MakeCompanyDataClient(services);
  return ScreenWithService(*http, services.screenerHost, c, progress);
}

ScreenResult ScreenLocally(runs::Session& s, const ScreenCriteria& c,
                           platform::Progress& progress) {
  CheckCriteria(c);
  StockRows rows;
  if (NeedsStockRows(c)) {
    if (!s.stockDb().isOpen()) {
      throw Error("the stock database in " + s.config.IncFilePath + " could not be opened");
    }
    // The store has no reader of the EPS figures; its file is read here, now that the store
    // has made sure it exists.
    rows = StockRows::Read(std::filesystem::path(s.config.IncFilePath) / "stockdata.mdb");
  }
  return ScreenPriceFiles(s.config.StockFilePath, rows, c, progress, runs::ListJobs(s.config));
}

std::filesystem::path SaveScreenList(const runs::Session& s, const std::string& name,
                                     const std::vector<std::string>& symbols) {
  if (!IsSet(name)) throw UsageError("the screen's watch list needs a name");
  const auto path = data::WatchListPath(s.config.IncFilePath, name);
  data::WriteWatchList(path, data::WatchListText(symbols));
  return path;
}

}  // namespace halvard::screener
