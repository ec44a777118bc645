#pragma once
// The live trading report: for every symbol of the session's list, what to do on the next
// trading day (buy, with the stop-buy and stop-loss prices, or skip), repeated over the sweep
// levels. The report grows across runs, as the window's text does until it is closed.

#include <string>

#include "halvard/platform/clock.h"
#include "halvard/runs/list_report.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {

class LiveReport : public ListReport {
 public:
  // The report is dated today (a serial date).
  LiveReport(Session& session, platform::Progress& progress, double today = platform::Today());

  // The whole sweep: a header, then one pass per level combination (none for an empty list).
  void Run(const RunSwitches& switches);
  // One pass over the list.
  void RunLive(const RunSwitches& switches);

  // The symbols of the last pass that got a "Buy" row, each followed by CR LF.
  const std::string& buyList() const { return buyList_; }

 private:
  double today_;
  std::string buyList_;
};

}  // namespace halvard::runs
