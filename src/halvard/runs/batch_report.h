#pragma once
// Batch testing: every symbol of the session's list backtested, a table row per stock and a
// summary, repeated over the sweep levels with the most profitable combination reported.

#include <optional>
#include <string>

#include "halvard/runs/list_report.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {

class BatchReport : public ListReport {
 public:
  BatchReport(Session& session, platform::Progress& progress) : ListReport(session, progress) {}

  // One batch over the list: the table and its summary.
  void BatchCore(const RunSwitches& switches);
  // Both ranges nested, with the best combination at the end.
  void GoCommand(const RunSwitches& switches);
  // The stop-loss range, then separately the RS-days range (with the stop loss the first half
  // left), each with its best level.
  void RunBatch(const RunSwitches& switches);

  // The symbols the engine traded, one for every batch that traded them, each with CR LF.
  const std::string& tradedList() const { return tradedList_; }

 private:
  // Runs one batch as step k of n; returns its total profit, or nothing when cancelled.
  std::optional<double> Step(int k, int n, const RunSwitches& switches);

  std::string tradedList_;
};

}  // namespace halvard::runs
