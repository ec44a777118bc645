#pragma once
// What the live report and the batch test share: the sweep levels, a report that grows run
// after run (as the window's text does until it is closed), and the walk over the session's
// list that loads each stock, reports a missing file and computes the boxes.

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "halvard/data/price_cache.h"
#include "halvard/platform/progress.h"
#include "halvard/platform/text_sink.h"
#include "halvard/runs/session.h"
#include "halvard/runs/sweep.h"

namespace halvard::runs {

class ListReport {
 public:
  // The levels start as one pass with the current stop loss and RS days.
  SweepLevels levels;

  const std::string& text() const { return report_.text(); }

 protected:
  ListReport(Session& session, platform::Progress& progress);

  void Line(std::string_view text);
  // " from S to E with a step of STEP" of the two level ranges.
  std::string StopLossRange() const;
  std::string RsRange() const;

  // Calls tested() for every stock of the list that loads, with its boxes computed and (when
  // given) the backtest run by the session's engine; a missing price file gets the row
  // "SYMBOL\tError opening stock file " (and a call of notLoaded, when given). Each stock is
  // progress step i (from 0) with the text "i+1/n", the count the windows show. Several threads
  // load and backtest (see WalkStocks). Returns false when the run was cancelled before the end
  // of the list.
  bool ForEachStock(const std::function<void()>& tested,
                    const std::function<void()>& notLoaded = {},
                    const std::optional<engine::BacktestOptions>& backtest = std::nullopt);

  Session& s_;
  platform::Progress& progress_;
  platform::StringSink report_;

 private:
  data::PriceCache prices_;  // every level of a sweep reads the same files
};

}  // namespace halvard::runs
