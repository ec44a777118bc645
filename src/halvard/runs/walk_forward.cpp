#include "halvard/runs/walk_forward.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "halvard/error.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/history_span.h"

namespace halvard::runs {
namespace {

using platform::FormatFixed;
using platform::FormatGeneral;

struct Combination {
  double stopLoss;
  int rsDays;
};

// Every combination in the order the batch sweep tries them: stop losses outer, RS days inner.
std::vector<Combination> Combinations(const SweepLevels& levels) {
  const auto rsDays = RsLevels(levels);
  std::vector<Combination> all;
  for (const double stopLoss : StopLossLevels(levels)) {
    for (const int days : rsDays) all.push_back({stopLoss, days});
  }
  return all;
}

// The profits of one window and one combination over the list, summed as the batch summary sums
// them (gains and losses apart, then together), so that the whole history gives the batch's
// own total to the last bit and ties fall the same way.
struct Tally {
  double win = 0;
  double loss = 0;
  void Add(double profit) {
    if (profit > 0) win += profit;
    if (profit < 0) loss += profit;
  }
  double total() const { return win + loss; }
};
using Tallies = std::vector<Tally>;  // one per combination

// The batch sweep's choice: the first combination strictly above 0 and above all before it.
std::optional<size_t> MostProfitable(const Tallies& tallies) {
  std::optional<size_t> chosen;
  double best = 0;
  for (size_t c = 0; c < tallies.size(); ++c) {
    if (tallies[c].total() - best > 0) {
      best = tallies[c].total();
      chosen = c;
    }
  }
  return chosen;
}

std::string LevelsText(const Combination& c) {
  return "a stoploss setting " + FormatGeneral(c.stopLoss) +
         "$ below box bottom and RS comparison at " + std::to_string(c.rsDays) + " days";
}

}  // namespace

void WalkForwardReport::WalkForward(const RunSwitches& switches, int folds) {
  if (folds < 1 || folds > kMaxFolds) {
    throw UsageError("walk-forward folds: " + std::to_string(folds) +
                     " is not a whole number from 1 to " + std::to_string(kMaxFolds));
  }
  const auto combinations = Combinations(levels);
  const int viewDays = s_.view().viewDays;
  Line("Walk Forward Testing " + s_.listName + " in " + std::to_string(folds) + " folds");
  Line("Stoploss settings starting" + StopLossRange());
  Line("RS settings starting" + RsRange());
  Line(kDashRule);
  Line(BuyModeLine(s_.config.buyMode));
  Line("Each symbol's newest " + std::to_string(viewDays) + " days (all of a shorter file) in " +
       std::to_string(folds + 1) + " equal spans, the days left over in the newest");
  Line("Fold f trades span f with the levels most profitable on spans 0 to f-1");
  Line(kDashRule);

  // The levels are tried on a copy, on a view of each window, with an engine of their own.
  settings::Config config = s_.config;
  const auto window = std::make_unique<engine::StockView>();
  platform::StringSink rows;  // the engine's result rows, which this report does not show
  engine::BackTester tester(*window, config, s_.log(), rows);

  const size_t n = combinations.size();
  std::vector<Tallies> inSample(static_cast<size_t>(folds), Tallies(n));
  std::vector<Tallies> outOfSample(static_cast<size_t>(folds), Tallies(n));
  Tallies whole(n);
  int tested = 0;
  const auto backtest = [&](const engine::StockView& full, DaySpan span, Tallies& into) {
    CutToSpan(full, span, *window);
    engine::ComputeBoxes(*window, config.enableGraphUpdate);
    for (size_t c = 0; c < n; ++c) {
      config.stopLossLimit = combinations[c].stopLoss;
      config.rsDayCurr = static_cast<int16_t>(combinations[c].rsDays);
      tester.Backtest(switches.ForListRun(false));
      into[c].Add(tester.totalProfit);
    }
  };
  const bool finished = ForEachStock([&] {
    const engine::StockView& v = s_.view();
    const int history = std::min(v.viewDays, v.barCount);
    const auto spans = SplitHistory(history, folds + 1);
    if (spans.empty()) {
      Line(v.stockSymbol + "\tSkipped: " + std::to_string(history) + " days make spans of " +
           std::to_string(history / (folds + 1)) + " days, fewer than " +
           std::to_string(kMinSpanDays));
      return;
    }
    ++tested;
    for (int f = 1; f <= folds; ++f) {
      backtest(v, JoinSpans(spans, 0, f - 1), inSample[f - 1]);
      backtest(v, spans[f], outOfSample[f - 1]);
    }
    backtest(v, JoinSpans(spans, 0, folds), whole);
  });
  if (!finished) return;

  Line("Symbols tested = " + std::to_string(tested));
  Line(kDashRule);
  Line(" Fold \t Stop Loss \t RS Days \t In-Sample \t Out-of-Sample ");
  Line(kDashRule);
  double outTotal = 0;
  for (int f = 1; f <= folds; ++f) {
    const auto chosen = MostProfitable(inSample[f - 1]);
    if (!chosen) {
      Line(std::to_string(f) + "\tnone\tnone\t" + FormatFixed(0, 2) + "\t" + FormatFixed(0, 2) +
           "\tno levels made a profit before this span");
      continue;
    }
    const Combination& c = combinations[*chosen];
    const double out = outOfSample[f - 1][*chosen].total();
    outTotal += out;
    Line(std::to_string(f) + "\t" + FormatGeneral(c.stopLoss) + "\t" + std::to_string(c.rsDays) +
         "\t" + FormatFixed(inSample[f - 1][*chosen].total(), 2) + "\t" + FormatFixed(out, 2));
  }
  Line(kDashRule);
  Line("Out-of-sample total = " + FormatFixed(outTotal, 2));
  const auto claimed = MostProfitable(whole);
  Line(claimed
           ? "In-sample best over the whole history = " + FormatFixed(whole[*claimed].total(), 2) +
                 " with " + LevelsText(combinations[*claimed]) + "."
           : "In-sample best over the whole history = " + FormatFixed(0, 2) +
                 ": no levels made a profit.");
  Line(kEqualsRule);
}

}  // namespace halvard::runs
