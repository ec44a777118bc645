#pragma once
// Batch testing: every symbol of the session's list backtested, a table row per stock and a
// summary, repeated over the sweep levels with the most profitable combination reported.

#include <string>

#include "halvard/data/price_cache.h"
#include "halvard/platform/progress.h"
#include "halvard/platform/text_sink.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/session.h"
#include "halvard/runs/sweep.h"

namespace halvard::runs {

class BatchTest {
 public:
  // The levels start as one pass with the current stop loss and RS days.
  BatchTest(Session& session, platform::Progress& progress);

  SweepLevels levels;

  // One batch over the list: the table and its summary.
  void BatchCore(const RunSwitches& switches);
  // Both ranges nested, with the best combination at the end.
  void GoCommand(const RunSwitches& switches);
  // The stop-loss range, then separately the RS-days range (with the stop loss the first half
  // left), each with its best level.
  void RunBatch(const RunSwitches& switches);

  const std::string& text() const { return report_.text(); }
  // The symbols the engine traded, one for every batch that traded them, each with CR LF.
  const std::string& tradedList() const { return tradedList_; }

 private:
  void Line(std::string_view text);
  // Runs one batch as step k of n; returns its total profit, or nothing when cancelled.
  bool Step(int k, int n, const RunSwitches& switches, double& total);

  Session& s_;
  platform::Progress& progress_;
  data::PriceCache prices_;  // every level of a sweep backtests the same files
  platform::StringSink report_;
  std::string tradedList_;
};

}  // namespace halvard::runs
