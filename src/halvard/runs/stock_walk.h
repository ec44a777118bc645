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

#include <exception>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "halvard/data/price_cache.h"
#include "halvard/engine/back_tester.h"
#include "halvard/platform/text_sink.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

// What one more backtest of a stock left: the engine's run state and flags, or the error it
// stopped on (with the flags as they stood then).
struct PassOutcome {
  engine::BackTester::RunState state{};
  bool unusualVolumeFound = false;
  bool unusualVolumeSearched = false;
  std::exception_ptr error;
  // Where its log and its result row end in the text of the stock's outcomes.
  size_t logEnd = 0;
  size_t rowEnd = 0;
};

// The later passes' backtests of one stock: an outcome a pass, and what they wrote one after the
// other in one text (so a stock's outcomes cost one buffer, not one a pass): each pass's log
// (empty when the log is not kept), then its result row (empty when it writes none).
struct AlsoOutcomes {
  std::vector<PassOutcome> passes;
  platform::StringSink text;

  std::string_view Log(size_t k) const {
    return Slice(k == 0 ? 0 : passes[k - 1].rowEnd, passes[k].logEnd);
  }
  std::string_view Row(size_t k) const { return Slice(passes[k].logEnd, passes[k].rowEnd); }

 private:
  std::string_view Slice(size_t from, size_t to) const {
    return std::string_view(text.text()).substr(from, to - from);
  }
};

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
  // own) and the result row it wrote for later (an error ends the list). Their outcomes go to
  // alsoTested, in list order, before loaded; alsoTested may take them over by a swap.
  std::vector<engine::TradingSettings> also = {};
  std::function<void(AlsoOutcomes& outcomes)> alsoTested = {};
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
