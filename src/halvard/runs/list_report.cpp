#include "halvard/runs/list_report.h"

#include "halvard/platform/number_text.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/stock_walk.h"

namespace halvard::runs {

ListReport::ListReport(Session& session, platform::Progress& progress)
    : levels(DefaultLevels(session.config)), s_(session), progress_(progress) {}

void ListReport::Line(std::string_view text) {
  report_.Append(text);
  report_.Append("\r\n");
}

std::string ListReport::StopLossRange() const {
  using platform::FormatGeneral;
  return RangeText(FormatGeneral(levels.stopLossStart), FormatGeneral(levels.stopLossStop),
                   FormatGeneral(levels.stopLossStep));
}

std::string ListReport::RsRange() const {
  return RangeText(std::to_string(levels.rsStart), std::to_string(levels.rsStop),
                   std::to_string(levels.rsStep));
}

bool ListReport::ForEachStock(const std::function<void()>& tested,
                              const std::function<void()>& notLoaded,
                              const std::optional<engine::BacktestOptions>& backtest,
                              const std::optional<engine::TradingSettings>& trading) {
  const engine::StockView& v = s_.view();
  const int n = static_cast<int>(s_.symbols.size());
  // Once the files are parsed and kept, a stock's backtest costs less than handing it between
  // threads: the later levels of a sweep run on this one.
  const bool cached = prices_.keptBars() > 0;
  return WalkStocks(s_, {.before =
                             [&](int i) {
                               if (progress_.Cancelled()) return false;
                               progress_.Step(i, n,
                                              std::to_string(i + 1) + "/" + std::to_string(n));
                               return true;
                             },
                         .missing =
                             [&] {
                               Line(v.stockSymbol + "\tError opening stock file ");
                               if (notLoaded) notLoaded();
                             },
                         .loaded = tested,
                         .backtest = backtest,
                         .trading = trading,
                         .cache = &prices_,
                         .jobs = cached ? 1 : 0});
}

}  // namespace halvard::runs
