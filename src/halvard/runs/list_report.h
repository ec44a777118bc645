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

// What a sweep leaves in the settings: when it ends, finished, cancelled or stopped by a refused
// file, the stop loss and RS days of the last pass it reached become the settings' own. Left on
// purpose, not restored: the user sees them as the current levels.
class LevelsLeftBehind {
 public:
  LevelsLeftBehind(settings::Config& config, const engine::TradingSettings& pass)
      : config_(config), pass_(pass) {}
  ~LevelsLeftBehind() {
    config_.stopLossLimit = pass_.stopLossLimit;
    config_.rsDayCurr = static_cast<int16_t>(pass_.rsDays);
  }
  LevelsLeftBehind(const LevelsLeftBehind&) = delete;
  LevelsLeftBehind& operator=(const LevelsLeftBehind&) = delete;

 private:
  settings::Config& config_;
  const engine::TradingSettings& pass_;
};

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
  // load and backtest (see WalkStocks); the backtest trades with trading. Returns false when
  // the run was cancelled before the end of the list.
  bool ForEachStock(const std::function<void()>& tested,
                    const std::function<void()>& notLoaded = {},
                    const std::optional<engine::BacktestOptions>& backtest = std::nullopt,
                    const std::optional<engine::TradingSettings>& trading = std::nullopt);

  Session& s_;
  platform::Progress& progress_;
  platform::StringSink report_;

 private:
  data::PriceCache prices_;  // every level of a sweep reads the same files
};

}  // namespace halvard::runs
