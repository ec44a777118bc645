#pragma once
// The live trading report: for every symbol of the session's list, what to do on the next
// trading day (buy, with the stop-buy and stop-loss prices, or skip), repeated over the sweep
// levels. The report grows across runs, as the window's text does until it is closed.

#include <string>

#include "halvard/platform/clock.h"
#include "halvard/data/price_cache.h"
#include "halvard/platform/progress.h"
#include "halvard/platform/text_sink.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/session.h"
#include "halvard/runs/sweep.h"

namespace halvard::runs {

class LiveReport {
 public:
  // The levels start as one pass with the current stop loss and RS days. The report is dated
  // today (a serial date).
  LiveReport(Session& session, platform::Progress& progress, double today = platform::Today());

  SweepLevels levels;

  // The whole sweep: a header, then one pass per level combination (none for an empty list).
  void Run(const RunSwitches& switches);
  // One pass over the list.
  void RunLive(const RunSwitches& switches);

  const std::string& text() const { return report_.text(); }
  // The symbols of the last pass that got a "Buy" row, each followed by CR LF.
  const std::string& buyList() const { return buyList_; }

 private:
  void Line(std::string_view text);

  Session& s_;
  platform::Progress& progress_;
  double today_;
  data::PriceCache prices_;  // every level of a sweep backtests the same files
  platform::StringSink report_;
  std::string buyList_;
};

}  // namespace halvard::runs
