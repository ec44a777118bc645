#include "halvard/runs/live_report.h"

#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::runs {

using platform::FormatGeneral;

LiveReport::LiveReport(Session& session, platform::Progress& progress, double today)
    : levels(DefaultLevels(session.config)), s_(session), progress_(progress), today_(today) {}

void LiveReport::Line(std::string_view text) {
  report_.Append(text);
  report_.Append("\r\n");
}

void LiveReport::Run(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  Line("Live Testing " + s_.listName + " for stoploss settings starting" +
       RangeText(FormatGeneral(levels.stopLossStart), FormatGeneral(levels.stopLossStop),
                 FormatGeneral(levels.stopLossStep)));
  Line(" for RS settings starting" + RangeText(std::to_string(levels.rsStart),
                                               std::to_string(levels.rsStop),
                                               std::to_string(levels.rsStep)));
  Line(std::string(kDashRule) + std::string(kDashRule));
  for (const double stopLoss : stopLosses) {
    s_.config.stopLossLimit = stopLoss;
    for (const int days : rsDays) {
      // The engine reads its RS days from the settings: each level is the one of its pass.
      s_.config.rsDayCurr = static_cast<int16_t>(days);
      if (progress_.Cancelled()) return;
      if (!s_.symbols.empty()) RunLive(switches);
    }
  }
}

void LiveReport::RunLive(const RunSwitches& switches) {
  const settings::Config& c = s_.config;
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
  engine::StockView& v = s_.view();
  engine::BackTester& tester = s_.tester();
  const int n = static_cast<int>(s_.symbols.size());
  for (int i = 0; i < n; ++i) {
    if (progress_.Cancelled()) return;
    progress_.Step(i + 1, n, std::to_string(i + 1) + "/" + std::to_string(n));
    if (!prices_.Load(v, s_.StockPath(s_.symbols[i]))) {
      Line(v.stockSymbol + "\tError opening stock file ");
      continue;
    }
    engine::ComputeBoxes(v, c.enableGraphUpdate);
    tester.Backtest(true, true, switches.corvane, switches.unusualVolume, switches.positiveRS);
    if (tester.buyArmed) {
      Line(v.stockSymbol + "\tBuy\t" + platform::FormatShortDate(tester.buyArmedDate) + "\t" +
           FormatGeneral(tester.lastStopBuy) + "\t" + FormatGeneral(tester.lastStopLoss));
      buyList_ += v.stockSymbol + "\r\n";
    } else {
      Line(v.stockSymbol + "\tSkip");
    }
  }
}

}  // namespace halvard::runs
