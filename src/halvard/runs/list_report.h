#pragma once
// What the live report and the batch test share: the sweep levels, a report that grows run
// after run (as the window's text does until it is closed), and the walk over the session's
// list that loads each stock, reports a missing file and computes the boxes.

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "halvard/data/price_cache.h"
#include "halvard/platform/progress.h"
#include "halvard/platform/text_sink.h"
#include "halvard/runs/pass_outcomes.h"
#include "halvard/runs/session.h"
#include "halvard/runs/stock_walk.h"
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

  // The whole report; once it is streamed, only what has not been handed on yet.
  const std::string& text() const { return report_.text(); }
  // Hands the report to `to` as it is made, whole lines 64 KB at a time, instead of
  // keeping it (the command line prints and saves a sweep's report so); FlushReport hands on the
  // rest, however the run ended.
  void StreamReport(platform::TextSink& to) { report_.PassOn(to); }
  void FlushReport() { report_.Flush(); }

  // The passes of a sweep one walk of the list backtests (see PlanPasses): enough that a stock's
  // load and boxes are shared by many backtests, few enough that the outcomes held stay small
  // (a hundred and fifty bytes a stock and pass) and a cancel in the walk throws little away.
  static constexpr size_t kGroupPasses = 50;
  // When the engine keeps its log, each outcome held keeps its log too (about 500 bytes): a
  // group then holds at most this many outcomes (some 50 MB), so a big list has smaller groups.
  static constexpr size_t kLoggedOutcomes = 100'000;
  // At most `passes` a group from now on (1: every pass walks the list itself).
  void GroupPasses(size_t passes) { groupPasses_ = std::max<size_t>(passes, 1); }

 protected:
  ListReport(Session& session, platform::Progress& progress);

  // Ends the plan of a sweep when the sweep ends.
  class PassPlan {
   public:
    explicit PassPlan(ListReport& report) : report_(report) {}
    ~PassPlan();
    PassPlan(const PassPlan&) = delete;
    PassPlan& operator=(const PassPlan&) = delete;

   private:
    ListReport& report_;
  };
  // A sweep announces its passes, in the order ForEachStock walks them with a backtest. When the
  // boxes are drawn, the passes then go in groups (see GroupSize): the first of a group walks
  // the list (on every thread) and backtests each stock with the group's other passes too, each
  // keeping its result row and log; those passes are then walked from the outcomes kept, stock
  // by stock with the same progress, rows, log and state. That holds only when no stock's
  // outcome hangs on what a pass before it left in the view: when the first stock that loads
  // has a history shorter than what the engine reads, every pass walks the list itself.
  [[nodiscard]] PassPlan PlanPasses(std::vector<engine::TradingSettings> passes);
  // Every combination of the levels with the settings of base, stop losses outer.
  static std::vector<engine::TradingSettings> PassesAt(const engine::TradingSettings& base,
                                                       const std::vector<double>& stopLosses,
                                                       const std::vector<int>& rsDays);

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
  platform::PassingSink report_;

 private:
  // What the first pass of a group made of a stock: what its rows and the view show, and the
  // outcomes of the group's other passes.
  struct StockRecord {
    bool found = false;
    std::string path;
    std::string symbol;
    int barCount = 0;
    double newestDate = 0;
  };

  // The passes of a group over n stocks: kGroupPasses or what GroupPasses set, fewer when the
  // kept logs would pass kLoggedOutcomes.
  size_t GroupSize(size_t n) const;
  // Pass `k` of the group (from 0 after its first) from the records, as a walk would do it.
  bool Replay(size_t k, const StockWalk& walk);
  // Puts into the session's view what a walk leaves after stock `last` (none when -1).
  void RestoreView(int last);

  data::PriceCache prices_;  // every level of a sweep reads the same files
  std::vector<engine::TradingSettings> plan_;
  size_t walked_ = 0;  // passes of the plan walked so far
  bool grouped_ = false;
  size_t groupPasses_ = kGroupPasses;
  size_t groupStart_ = 0;  // the pass whose walk made the records
  size_t groupEnd_ = 0;    // one past its group's last pass
  std::vector<StockRecord> records_;
  PassOutcomes outcomes_;  // of the group's passes after its first
};

}  // namespace halvard::runs
