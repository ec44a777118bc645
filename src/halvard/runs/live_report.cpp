#include "halvard/runs/live_report.h"

#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::runs {

using platform::FormatGeneral;

LiveReport::LiveReport(Session& session, platform::Progress& progress, double today)
    : ListReport(session, progress), today_(today) {}

void LiveReport::Run(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  Line("Live Testing " + s_.listName + " for stoploss settings starting" + StopLossRange());
  Line(" for RS settings starting" + RsRange());
  Line(std::string(kDashRule) + std::string(kDashRule));
  engine::TradingSettings pass = engine::TradingSettingsOf(s_.config);
  const LevelsLeftBehind left(s_.config, pass);
  const PassPlan plan = PlanPasses(PassesAt(pass, stopLosses, rsDays));
  for (const double stopLoss : stopLosses) {
    pass.stopLossLimit = stopLoss;
    for (const int days : rsDays) {
      pass.rsDays = days;
      if (progress_.Cancelled()) return;
      if (!s_.symbols.empty()) RunLive(switches, pass);
    }
  }
}

void LiveReport::RunLive(const RunSwitches& switches) {
  RunLive(switches, engine::TradingSettingsOf(s_.config));
}

void LiveReport::RunLive(const RunSwitches& switches, const engine::TradingSettings& trading) {
  const settings::Config& c = s_.config;
  LivePass& pass = passes_.emplace_back(LivePass{.date = today_,
                                                 .listName = s_.listName,
                                                 .stopLossLimit = trading.stopLossLimit,
                                                 .rsDays = trading.rsDays,
                                                 .rsCheck = switches.positiveRS,
                                                 .unusualVolume = c.useUnusualVolume,
                                                 .buyMode = c.buyMode,
                                                 .rows = {}});
  Line("Starting Live Trading on " + platform::FormatShortDate(today_) + " for " + s_.listName);
  Line(switches.positiveRS ? "RS Check is Enabled" : "RS Check is Disabled");
  // This line follows the setting, not the switch.
  Line(c.useUnusualVolume ? "Unusual Volume Check is Enabled "
                          : "Unusual Volume Check is Disabled ");
  Line(BuyModeLine(c.buyMode));
  Line(kLongDashRule);
  Line("SYMBOL   ACTION      DATE    STOPBUY     STOPLOSS             ");
  Line(kLongDashRule);
  buyList_.clear();
  const engine::StockView& v = s_.view();
  engine::BackTester& tester = s_.tester();
  ForEachStock(
      [&] {
        LiveRow row{.symbol = v.stockSymbol, .newestDate = v.newestDate};
        if (tester.buyArmed) {
          row.action = LiveRow::Action::kBuy;
          row.signalDate = tester.buyArmedDate;
          row.stopBuy = tester.lastStopBuy;
          row.stopLoss = tester.lastStopLoss;
          Line(v.stockSymbol + "\tBuy\t" + platform::FormatShortDate(tester.buyArmedDate) + "\t" +
               FormatGeneral(tester.lastStopBuy) + "\t" + FormatGeneral(tester.lastStopLoss));
          buyList_ += v.stockSymbol + "\r\n";
        } else {
          Line(v.stockSymbol + "\tSkip");
        }
        pass.rows.push_back(std::move(row));
      },
      [&] { pass.rows.push_back({.symbol = v.stockSymbol, .action = LiveRow::Action::kNoPrices}); },
      switches.ForListRun(true), trading);
}

}  // namespace halvard::runs
