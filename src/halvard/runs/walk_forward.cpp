#include "halvard/runs/walk_forward.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "halvard/error.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/history_span.h"
#include "halvard/settings/value_from_text.h"

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

// The batch sweep's choice over the combinations in the order it tries them.
std::optional<size_t> MostProfitable(const Tallies& tallies) {
  std::optional<size_t> chosen;
  MostProfitableSoFar most;
  for (size_t c = 0; c < tallies.size(); ++c) {
    if (most.Offer(tallies[c].total())) chosen = c;
  }
  return chosen;
}

std::string LevelsText(const Combination& c) {
  return "a stoploss setting " + FormatGeneral(c.stopLoss) +
         "$ below box bottom and RS comparison at " + std::to_string(c.rsDays) + " days";
}

// Backtests windows of the symbol in the session's view with every combination, each on trading
// settings of its own, on a view of the window and an engine of its own (logging into the
// session's log when that is kept). The session's settings are only read.
class WindowTester {
 public:
  WindowTester(Session& session, const RunSwitches& switches)
      : trading_(engine::TradingSettingsOf(session.config)),
        drawBoxes_(session.config.enableGraphUpdate),
        window_(std::make_unique<engine::StockView>()),
        tester_(*window_, session.log(), rows_),
        options_(switches.ForListRun(false)) {
    tester_.KeepLog(session.tester().keepsLog());
  }

  void Backtest(const engine::StockView& full, DaySpan span,
                const std::vector<Combination>& combinations, Tallies& into) {
    CutToSpan(full, span, *window_);
    engine::ComputeBoxes(*window_, drawBoxes_);
    for (size_t c = 0; c < combinations.size(); ++c) {
      trading_.stopLossLimit = combinations[c].stopLoss;
      trading_.rsDays = combinations[c].rsDays;
      tester_.Backtest(trading_, options_);
      into[c].Add(tester_.totalProfit);
    }
  }

 private:
  engine::TradingSettings trading_;
  bool drawBoxes_;
  std::unique_ptr<engine::StockView> window_;
  platform::StringSink rows_;  // the engine's result rows, which the report does not show
  engine::BackTester tester_;
  engine::BacktestOptions options_;
};

}  // namespace

struct WalkForwardReport::Folds {
  Folds(std::vector<Combination> all, int folds)
      : combinations(std::move(all)),
        inSample(static_cast<size_t>(folds), Tallies(combinations.size())),
        outOfSample(static_cast<size_t>(folds), Tallies(combinations.size())),
        whole(combinations.size()) {}

  std::vector<Combination> combinations;
  std::vector<Tallies> inSample;     // fold f at f - 1: spans 0 to f - 1
  std::vector<Tallies> outOfSample;  // fold f at f - 1: span f
  Tallies whole;                     // every span
  int tested = 0;                    // the symbols in the tallies
};

void WalkForwardReport::WalkForward(const RunSwitches& switches, int folds) {
  if (const auto whole = settings::WholeFromNumber(folds, {1, kMaxFolds}); !whole.value) {
    throw UsageError("walk-forward folds: " + std::to_string(folds) + " is not " + whole.expected);
  }
  Folds tallies(Combinations(levels), folds);
  WalkForwardResult& result = walkForward_.emplace();
  result.list = s_.listName;
  result.buyMode = s_.config.buyMode;
  result.folds = folds;
  result.viewDays = s_.view().viewDays;
  WalkForwardHeader(folds);
  WindowTester tester(s_, switches);
  const auto backtest = [&](DaySpan span, Tallies& into) {
    tester.Backtest(s_.view(), span, tallies.combinations, into);
  };
  const auto missing = [&] { result.missing.push_back(s_.view().stockSymbol); };
  const bool finished = ForEachStock(
      [&] {
        const engine::StockView& v = s_.view();
        const int history = std::min(v.viewDays, v.barCount);
        const auto spans = SplitHistory(history, folds + 1);
        if (spans.empty()) {
          Line(v.stockSymbol + "\tSkipped: " + std::to_string(history) + " days make spans of " +
               std::to_string(history / (folds + 1)) + " days, fewer than " +
               std::to_string(kMinSpanDays));
          result.skipped.push_back({v.stockSymbol, history, history / (folds + 1)});
          return;
        }
        ++tallies.tested;
        for (int f = 1; f <= folds; ++f) {
          backtest(JoinSpans(spans, 0, f - 1), tallies.inSample[f - 1]);
          backtest(spans[f], tallies.outOfSample[f - 1]);
        }
        backtest(JoinSpans(spans, 0, folds), tallies.whole);
      },
      missing);
  if (finished) FoldTable(tallies);
}

void WalkForwardReport::WalkForwardHeader(int folds) {
  Line("Walk Forward Testing " + s_.listName + " in " + std::to_string(folds) + " folds");
  Line("Stoploss settings starting" + StopLossRange());
  Line("RS settings starting" + RsRange());
  Line(kDashRule);
  Line(BuyModeLine(s_.config.buyMode));
  Line("Each symbol's newest " + std::to_string(s_.view().viewDays) +
       " days (all of a shorter file) in " + std::to_string(folds + 1) +
       " equal spans, the days left over in the newest");
  Line("Fold f trades span f with the levels most profitable on spans 0 to f-1");
  Line(kDashRule);
}

void WalkForwardReport::FoldTable(const Folds& t) {
  WalkForwardResult& result = *walkForward_;
  result.finished = true;
  result.symbolsTested = t.tested;
  Line("Symbols tested = " + std::to_string(t.tested));
  Line(kDashRule);
  Line(" Fold \t Stop Loss \t RS Days \t In-Sample \t Out-of-Sample ");
  Line(kDashRule);
  double outTotal = 0;
  for (size_t f = 0; f < t.inSample.size(); ++f) {
    const std::string fold = std::to_string(f + 1);
    const auto chosen = MostProfitable(t.inSample[f]);
    if (!chosen) {
      Line(fold + "\tnone\tnone\t" + FormatFixed(0, 2) + "\t" + FormatFixed(0, 2) +
           "\tno levels made a profit before this span");
      result.foldRows.push_back({static_cast<int>(f) + 1, {}, {}, 0, 0});
      continue;
    }
    const Combination& c = t.combinations[*chosen];
    const double out = t.outOfSample[f][*chosen].total();
    outTotal += out;
    result.foldRows.push_back(
        {static_cast<int>(f) + 1, c.stopLoss, c.rsDays, t.inSample[f][*chosen].total(), out});
    Line(fold + "\t" + FormatGeneral(c.stopLoss) + "\t" + std::to_string(c.rsDays) + "\t" +
         FormatFixed(t.inSample[f][*chosen].total(), 2) + "\t" + FormatFixed(out, 2));
  }
  Line(kDashRule);
  Line("Out-of-sample total = " + FormatFixed(outTotal, 2));
  const auto claimed = MostProfitable(t.whole);
  result.outOfSampleTotal = outTotal;
  if (claimed) {
    result.bestProfit = t.whole[*claimed].total();
    result.bestStopLoss = t.combinations[*claimed].stopLoss;
    result.bestRsDays = t.combinations[*claimed].rsDays;
  }
  Line(claimed ? "In-sample best over the whole history = " +
                     FormatFixed(t.whole[*claimed].total(), 2) + " with " +
                     LevelsText(t.combinations[*claimed]) + "."
               : "In-sample best over the whole history = " + FormatFixed(0, 2) +
                     ": no levels made a profit.");
  Line(kEqualsRule);
}

}  // namespace halvard::runs
