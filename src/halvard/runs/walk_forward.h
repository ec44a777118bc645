#pragma once
// Walk-forward testing: do the levels a sweep finds most profitable keep paying on days they
// were not chosen on? Each symbol's history (the days a batch looks at: the view's days, all of
// a shorter file) is cut into folds + 1 consecutive spans of equal length, the days left over
// going to the newest span. For fold f = 1 .. folds the levels are the sweep's most profitable
// combination over spans 0 to f - 1 taken as one window (an expanding window: every fold learns
// from all the days before it), backtested then alone on span f.
//
// "Most profitable" is the batch sweep's rule: the list's total of the window, strictly above 0
// and above every combination before it, so the first of equal totals wins. When no combination
// made money before a span, the sweep names none, and that fold is not traded (0 out of sample).
//
// The edges of a window: it is backtested as if its newest day were the newest day loaded, so
// nothing after it is read. Boxes are found and trades made on the window's days only; the
// older days stay loaded for the engine's look-backs. A trade still open on the window's newest
// day is valued at that day's close, as a trade open at the end of the data always is: an open
// loss counts against the levels, not only the trades that closed.
//
// The levels are tried on a copy of the settings: a walk-forward leaves the settings, the stop
// loss and RS days included, as they were.

#include <optional>
#include <string>
#include <vector>

#include "halvard/runs/batch_report.h"

namespace halvard::runs {

// What a walk-forward report's text says, as values.
struct WalkForwardFold {
  int fold = 0;
  std::optional<double> stopLoss;  // the chosen levels; none when no levels made a profit
  std::optional<int> rsDays;
  double inSample = 0;
  double outOfSample = 0;
};
struct WalkForwardSkip {
  std::string symbol;
  int days = 0;      // the days of its history
  int spanDays = 0;  // the length its spans would have
};
struct WalkForwardResult {
  std::string list;
  int buyMode = 0;
  int folds = 0;
  int viewDays = 0;
  std::vector<std::string> missing;  // symbols without a price file
  std::vector<WalkForwardSkip> skipped;
  bool finished = false;  // false when the run stopped before the fold table
  int symbolsTested = 0;
  std::vector<WalkForwardFold> foldRows;
  double outOfSampleTotal = 0;
  std::optional<double> bestProfit;  // the in-sample best over the whole history
  std::optional<double> bestStopLoss;
  std::optional<int> bestRsDays;
};

// 42 folds: the 1001 days a price file holds make at most 43 spans of the shortest length.
inline constexpr int kMaxFolds = 42;

// A batch report that can also walk forward; both kinds of run add to the same report.
class WalkForwardReport : public BatchReport {
 public:
  using BatchReport::BatchReport;

  // The folds of every symbol of the list, a row per fold, and at the end the out-of-sample
  // total beside the in-sample best of the whole history (what the batch sweep reports). A
  // symbol whose spans would be too short is skipped with a row saying so. Folds outside 1 to
  // kMaxFolds are a halvard::UsageError.
  void WalkForward(const RunSwitches& switches, int folds);

  // The last walk-forward run, as values; nothing before one.
  const std::optional<WalkForwardResult>& walkForwardResult() const { return walkForward_; }

 private:
  struct Folds;  // every window's profits, per combination, over the symbols tested

  void WalkForwardHeader(int folds);
  void FoldTable(const Folds& folds);

  std::optional<WalkForwardResult> walkForward_;
};

}  // namespace halvard::runs
