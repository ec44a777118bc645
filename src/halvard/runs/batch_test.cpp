#include "halvard/runs/batch_test.h"

#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::runs {
namespace {

// Points the engine's result rows at a report for one batch, and back when the batch ends.
class ResultsRedirect {
 public:
  ResultsRedirect(engine::BackTester& tester, platform::TextSink& to)
      : tester_(tester), previous_(tester.results()) {
    tester.SetResults(to);
  }
  ~ResultsRedirect() { tester_.SetResults(previous_); }
  ResultsRedirect(const ResultsRedirect&) = delete;
  ResultsRedirect& operator=(const ResultsRedirect&) = delete;

 private:
  engine::BackTester& tester_;
  platform::TextSink& previous_;
};

}  // namespace

using platform::FormatFixed;
using platform::FormatGeneral;

BatchTest::BatchTest(Session& session, platform::Progress& progress)
    : levels(DefaultLevels(session.config)), s_(session), progress_(progress) {}

void BatchTest::Line(std::string_view text) {
  report_.Append(text);
  report_.Append("\r\n");
}

void BatchTest::BatchCore(const RunSwitches& switches) {
  Line(" Symbol \t Catalyst \t\t Trades \t Profit/Loss \t Status ");
  Line(std::string(kDashRule) + std::string(kDashRule));
  engine::StockView& v = s_.view();
  engine::BackTester& tester = s_.tester();
  tester.ResetTotals();
  const ResultsRedirect rows(tester, report_);  // the engine writes each stock's table row
  const int n = static_cast<int>(s_.symbols.size());
  for (int i = 0; i < n; ++i) {
    if (progress_.Cancelled()) return;
    progress_.Step(i + 1, n, std::to_string(i + 1) + "/" + std::to_string(n));
    if (!prices_.Load(v, s_.StockPath(s_.symbols[i]))) {
      Line(v.stockSymbol + "\tError opening stock file ");
      continue;
    }
    engine::ComputeBoxes(v, s_.config.enableGraphUpdate);
    tester.Backtest(true, false, switches.corvane, switches.unusualVolume, switches.positiveRS);
    if (tester.tradeCount > 0) tradedList_ += v.stockSymbol + "\r\n";
  }
  const settings::Config& c = s_.config;
  Line("");
  Line(kDashRule);
  Line("Stop loss is " + FormatFixed(c.stopLossLimit, 3) + "$ below bottom");
  Line("RS Day Comparison is for " + FormatFixed(c.rsDayCurr, 0) + " before today");
  Line(switches.positiveRS ? "RS Check is Enabled" : "RS Check is Disabled");
  Line(c.useUnusualVolume ? "Unusual Volume Check is Enabled "
                          : "Unusual Volume Check is Disabled ");
  Line(kDashRule);
  Line("Filter = " + s_.listName);
  Line(kDashRule);
  Line("Profit Making Stocks = " + std::to_string(tester.winCount));
  Line("Loss Making Stocks = " + std::to_string(tester.lossCount));
  Line("Total Trades = " + std::to_string(tester.allTrades));
  Line("Profitable Trades = " + FormatFixed(tester.winTotal, 2));
  Line("Losing Trades = " + FormatFixed(tester.lossTotal, 2));
  Line("Total Profit/Loss = " + FormatFixed(tester.winTotal + tester.lossTotal, 2));
  Line(kDashRule);
  Line(kEqualsRule);
}

bool BatchTest::Step(int k, int n, const RunSwitches& switches, double& total) {
  if (progress_.Cancelled()) return false;
  Line("Step " + std::to_string(k) + " of " + std::to_string(n));
  BatchCore(switches);
  if (progress_.Cancelled()) return false;
  Line(kStarRule);
  total = s_.tester().winTotal + s_.tester().lossTotal;
  return true;
}

void BatchTest::GoCommand(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  Line("Batch Testing " + s_.listName);
  Line("Stoploss settings starting" + RangeText(FormatGeneral(levels.stopLossStart),
                                                FormatGeneral(levels.stopLossStop),
                                                FormatGeneral(levels.stopLossStep)));
  Line("RS settings starting" + RangeText(std::to_string(levels.rsStart),
                                          std::to_string(levels.rsStop),
                                          std::to_string(levels.rsStep)));
  Line(kDashRule);
  Line(BuyModeLine(s_.config.buyMode));
  const int n = static_cast<int>(stopLosses.size() * rsDays.size());
  int k = 0;
  double best = 0;
  double bestStopLoss = 0;
  int bestDays = 0;
  for (const double stopLoss : stopLosses) {
    s_.config.stopLossLimit = stopLoss;
    for (const int days : rsDays) {
      s_.config.rsDayCurr = static_cast<int16_t>(days);
      double total = 0;
      if (!Step(++k, n, switches, total)) return;
      if (total - best > 0) {  // strictly: the first combination reaching the best keeps it
        best = total;
        bestStopLoss = stopLoss;
        bestDays = days;
      }
    }
  }
  Line("Maximum profit = " + FormatGeneral(best) + " with a stoploss setting " +
       FormatGeneral(bestStopLoss) + "$ below box bottom and RS comparison at " +
       std::to_string(bestDays) + " days.");
}

void BatchTest::RunBatch(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  Line("Batch Testing " + s_.listName + " for stoploss settings starting" +
       RangeText(FormatGeneral(levels.stopLossStart), FormatGeneral(levels.stopLossStop),
                 FormatGeneral(levels.stopLossStep)));
  Line(BuyModeLine(s_.config.buyMode));
  double best = 0;
  double bestStopLoss = 0;
  int k = 0;
  for (const double stopLoss : stopLosses) {
    s_.config.stopLossLimit = stopLoss;
    double total = 0;
    if (!Step(++k, static_cast<int>(stopLosses.size()), switches, total)) return;
    if (total - best > 0) {
      best = total;
      bestStopLoss = stopLoss;
    }
  }
  Line("Maximum profit = " + FormatGeneral(best) + " with a stoploss setting " +
       FormatGeneral(bestStopLoss) + "$ below box bottom.");

  Line("Batch Testing " + s_.listName + " for RS settings starting" +
       RangeText(std::to_string(levels.rsStart), std::to_string(levels.rsStop),
                 std::to_string(levels.rsStep)));
  Line(BuyModeLine(s_.config.buyMode));
  best = 0;
  int bestDays = 0;
  k = 0;
  for (const int days : rsDays) {
    s_.config.rsDayCurr = static_cast<int16_t>(days);
    double total = 0;
    if (!Step(++k, static_cast<int>(rsDays.size()), switches, total)) return;
    if (total - best > 0) {
      best = total;
      bestDays = days;
    }
  }
  Line("Maximum profit = " + FormatGeneral(best) + " with " + std::to_string(bestDays) +
       " days RS setting.");
}

}  // namespace halvard::runs
