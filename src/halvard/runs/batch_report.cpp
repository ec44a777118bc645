#include "halvard/runs/batch_report.h"

#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/pane_redirect.h"

namespace halvard::runs {

using platform::FormatFixed;
using platform::FormatGeneral;

BatchSweep& BatchReport::NewSweep(std::string varies) {
  result_.list = s_.listName;
  result_.buyMode = s_.config.buyMode;
  BatchSweep& sweep = result_.sweeps.emplace_back();
  sweep.varies = std::move(varies);
  return sweep;
}

void BatchReport::BatchCore(const RunSwitches& switches) {
  BatchCore(switches, engine::TradingSettingsOf(s_.config));
}

void BatchReport::BatchCore(const RunSwitches& switches, const engine::TradingSettings& pass) {
  if (result_.sweeps.empty()) NewSweep("none");  // a batch run alone
  BatchStep& step = result_.sweeps.back().steps.emplace_back();
  step.stopLoss = pass.stopLossLimit;
  step.rsDays = pass.rsDays;
  step.rsCheck = switches.positiveRS;
  step.unusualVolume = s_.config.useUnusualVolume;
  Line(" Symbol \t Catalyst \t\t Trades \t Profit/Loss \t Status ");
  Line(std::string(kDashRule) + std::string(kDashRule));
  const engine::StockView& v = s_.view();
  engine::BackTester& tester = s_.tester();
  tester.ResetTotals();
  const ResultsRedirect rows(tester, report_);  // the engine writes each stock's table row
  const auto tested = [&] {
    if (tester.tradeCount > 0) tradedList_ += v.stockSymbol + "\r\n";
    if (!keepRows_) return;
    step.rows.push_back({v.stockSymbol, tester.resultCode == 2 ? "Corvane" : "Pyramiding Boxes",
                         tester.tradeCount, tester.totalProfit, tester.ResultStatus()});
  };
  const auto missing = [&] {
    if (keepRows_) step.rows.push_back({v.stockSymbol, {}, {}, {}, "Error opening stock file"});
  };
  if (!ForEachStock(tested, missing, switches.ForListRun(false), pass)) return;
  step.profitMakingStocks = tester.winCount;
  step.lossMakingStocks = tester.lossCount;
  step.totalTrades = tester.allTrades;
  step.profitableTrades = tester.winTotal;
  step.losingTrades = tester.lossTotal;
  step.totalProfit = tester.winTotal + tester.lossTotal;
  step.finished = true;
  const settings::Config& c = s_.config;
  Line("");
  Line(kDashRule);
  Line("Stop loss is " + FormatFixed(pass.stopLossLimit, 3) + "$ below bottom");
  Line("RS Day Comparison is for " + FormatFixed(pass.rsDays, 0) + " before today");
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

std::optional<double> BatchReport::Step(int k, int n, const RunSwitches& switches,
                                        const engine::TradingSettings& pass) {
  if (progress_.Cancelled()) return {};
  Line("Step " + std::to_string(k) + " of " + std::to_string(n));
  BatchCore(switches, pass);
  if (progress_.Cancelled()) return {};
  Line(kStarRule);
  return s_.tester().winTotal + s_.tester().lossTotal;
}

void BatchReport::GoCommand(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  BatchSweep& sweep = NewSweep("both");
  Line("Batch Testing " + s_.listName);
  Line("Stoploss settings starting" + StopLossRange());
  Line("RS settings starting" + RsRange());
  Line(kDashRule);
  Line(BuyModeLine(s_.config.buyMode));
  const int n = static_cast<int>(stopLosses.size() * rsDays.size());
  int k = 0;
  MostProfitableSoFar most;
  double bestStopLoss = 0;
  int bestDays = 0;
  engine::TradingSettings pass = engine::TradingSettingsOf(s_.config);
  const LevelsLeftBehind left(s_.config, pass);
  const PassPlan plan = PlanPasses(PassesAt(pass, stopLosses, rsDays));
  for (const double stopLoss : stopLosses) {
    pass.stopLossLimit = stopLoss;
    for (const int days : rsDays) {
      pass.rsDays = days;
      const auto total = Step(++k, n, switches, pass);
      if (!total) return;
      if (most.Offer(*total)) {
        bestStopLoss = stopLoss;
        bestDays = days;
      }
    }
  }
  const double best = most.best;
  Line("Maximum profit = " + FormatGeneral(best) + " with a stoploss setting " +
       FormatGeneral(bestStopLoss) + "$ below box bottom and RS comparison at " +
       std::to_string(bestDays) + " days.");
  sweep.maximumProfit = best;
  sweep.bestStopLoss = bestStopLoss;
  sweep.bestRsDays = bestDays;
  sweep.finished = true;
}

void BatchReport::RunBatch(const RunSwitches& switches) {
  const auto stopLosses = StopLossLevels(levels);
  const auto rsDays = RsLevels(levels);
  BatchSweep* sweep = &NewSweep("stopLoss");
  Line("Batch Testing " + s_.listName + " for stoploss settings starting" + StopLossRange());
  Line(BuyModeLine(s_.config.buyMode));
  MostProfitableSoFar most;
  double bestStopLoss = 0;
  int k = 0;
  // The RS days pass with the last stop loss of the first sweep.
  engine::TradingSettings pass = engine::TradingSettingsOf(s_.config);
  const LevelsLeftBehind left(s_.config, pass);
  auto passes = PassesAt(pass, stopLosses, {pass.rsDays});
  const auto secondHalf = PassesAt(passes.back(), {stopLosses.back()}, rsDays);
  passes.insert(passes.end(), secondHalf.begin(), secondHalf.end());
  const PassPlan plan = PlanPasses(std::move(passes));
  for (const double stopLoss : stopLosses) {
    pass.stopLossLimit = stopLoss;
    const auto total = Step(++k, static_cast<int>(stopLosses.size()), switches, pass);
    if (!total) return;
    if (most.Offer(*total)) bestStopLoss = stopLoss;
  }
  double best = most.best;
  Line("Maximum profit = " + FormatGeneral(best) + " with a stoploss setting " +
       FormatGeneral(bestStopLoss) + "$ below box bottom.");
  sweep->maximumProfit = best;
  sweep->bestStopLoss = bestStopLoss;
  sweep->finished = true;

  sweep = &NewSweep("rsDays");

  Line("Batch Testing " + s_.listName + " for RS settings starting" + RsRange());
  Line(BuyModeLine(s_.config.buyMode));
  most = {};
  int bestDays = 0;
  k = 0;
  for (const int days : rsDays) {
    pass.rsDays = days;
    const auto total = Step(++k, static_cast<int>(rsDays.size()), switches, pass);
    if (!total) return;
    if (most.Offer(*total)) bestDays = days;
  }
  best = most.best;
  Line("Maximum profit = " + FormatGeneral(best) + " with " + std::to_string(bestDays) +
       " days RS setting.");
  sweep->maximumProfit = best;
  sweep->bestRsDays = bestDays;
  sweep->finished = true;
}

}  // namespace halvard::runs
