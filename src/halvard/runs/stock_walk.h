#pragma once
// The walk every run over a list makes: for each symbol of the session's list, in list order,
// the run's progress step, the load into the session's view, the boxes, and for the runs that
// ask a backtest by the session's engine; then the run looks at the outcome.
//
// With more than one job (the [Batch] Jobs setting) the loads and backtests run on other threads,
// each on a view, settings and engine of its own, and are handed over stock by stock in list
// order: the session's view, engine, log and settings end every stock as one thread leaves them,
// so the run's report, log and files are the same to the byte. A stock whose outcome depends on
// what the stocks before it left behind (the bars past a short history, the breakout mark of an
// open box when boxes are not drawn) is done again on the session's own view when handed over.

#include <functional>
#include <optional>
#include <vector>

#include "halvard/data/price_cache.h"
#include "halvard/engine/back_tester.h"
#include "halvard/runs/pass_outcomes.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

struct StockWalk {
  // Before stock i (progress, cancel); false stops the walk there.
  std::function<bool(int i)> before;
  // The stock has no price file: the view names it and holds no bars.
  std::function<void()> missing;
  // The stock is loaded into the session's view, its boxes computed (drawn as the settings say)
  // and, when backtest is set, the session's engine has run that backtest on it.
  std::function<void()> loaded;
  std::optional<engine::BacktestOptions> backtest;
  // The settings the backtest trades with; those of the session's settings when not given.
  std::optional<engine::TradingSettings> trading = std::nullopt;
  // The later passes of a sweep: after the backtest, the stock is backtested with each of these
  // settings too, on the same view, each keeping the log (when the session's engine keeps its
  // own) and the result row it wrote for later (an error ends the stock's passes). Their
  // outcomes go to alsoInto (made ready for the list and these passes), stock i's before the
  // call of loaded for it.
  std::vector<engine::TradingSettings> also = {};
  PassOutcomes* alsoInto = nullptr;
  // Loads go through it when given: a sweep reads each file once.
  data::PriceCache* cache = nullptr;
  // Threads for this walk; 0: ListJobs of the session's settings.
  int jobs = 0;
};

// Returns false when before stopped the walk.
bool WalkStocks(Session& s, const StockWalk& walk);

// The session's engine backtests the stock in the session's view. Once it has searched for
// unusual volume the settings keep the percentage it searched with (KeepSearchPercentage), also
// when the backtest stops on an error.
int BacktestOnSession(Session& s, const engine::TradingSettings& trading,
                      const engine::BacktestOptions& options);

// The threads a run over a list uses: the [Batch] Jobs setting, every core when it is 0 or less.
int ListJobs(const settings::Config& config);

}  // namespace halvard::runs
