#include "halvard/runs/stock_walk.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvard/data/file_parser.h"
#include "halvard/data/series_copy.h"
#include "halvard/platform/folder_names.h"
#include "halvard/platform/ordered_work.h"
#include "halvard/runs/pane_redirect.h"

namespace halvard::runs {
namespace {

// One thread's own view (holding the session's RS line and view length) and engine with its own
// log and result panes.
struct Worker {
  // Of the session's view only what no stock changes is read; the engine keeps its log when the
  // session's does.
  Worker(const engine::StockView& shown, bool keepLog) {
    view->rsLine = shown.rsLine;
    view->rsAvailable = shown.rsAvailable;
    view->viewDays = shown.viewDays;
    tester.KeepLog(keepLog);
  }

  std::unique_ptr<engine::StockView> view = std::make_unique<engine::StockView>();
  platform::StringSink log;
  platform::StringSink results;
  engine::BackTester tester{*view, log, results};
};

// The boxes and corvanes of a stock as ComputeBoxes found them: every entry a run, the engine or
// the chart reads (those below the counts).
struct FoundBoxes {
  int boxCount = 0;
  std::vector<int16_t> boxes;  // top, bottom, end and breakout mark of each box
  std::vector<uint32_t> colors;
  std::string lastBoxText;
  int corvaneCount = 0;
  std::vector<int16_t> corvanes;  // top, low and breakout day of each corvane

  FoundBoxes() = default;
  explicit FoundBoxes(const engine::StockView& v) { Keep(v); }

  // Keeps the boxes and corvanes of v (in the buffers an earlier stock used).
  void Keep(const engine::StockView& v) {
    boxCount = v.boxCount;
    corvaneCount = v.corvaneCount;
    boxes.clear();
    for (int k = 0; k < boxCount; ++k) {
      boxes.insert(boxes.end(),
                   {v.boxTopDay[k], v.boxBottomDay[k], v.boxEndDay[k], v.boxBrokeUp[k]});
    }
    colors.assign(v.boxColor.begin(),
                  v.boxColor.begin() + std::min(boxCount, engine::StockView::kMaxDrawnBoxes));
    lastBoxText = v.lastBoxText;
    corvanes.clear();
    for (int k = 0; k < corvaneCount; ++k) {
      corvanes.insert(corvanes.end(),
                      {v.corvaneTopDay[k], v.corvaneLowDay[k], v.corvaneBreakDay[k]});
    }
  }

  // What ComputeBoxes(v, true) leaves, when its bars are those these boxes were found on: the
  // entries past the counts are never read, and a drawing leaves none of those below unset.
  void PutDrawn(engine::StockView& v) const {
    v.boxCount = boxCount;
    for (int k = 0; k < boxCount; ++k) {
      const auto* box = &boxes[static_cast<size_t>(k) * 4];
      v.boxTopDay[k] = box[0];
      v.boxBottomDay[k] = box[1];
      v.boxEndDay[k] = box[2];
      v.boxBrokeUp[k] = box[3];
    }
    std::copy(colors.begin(), colors.end(), v.boxColor.begin());
    if (boxCount > 0) v.lastBoxText = lastBoxText;
    v.corvaneCount = corvaneCount;
    for (int k = 0; k < corvaneCount; ++k) {
      const auto* corvane = &corvanes[static_cast<size_t>(k) * 3];
      v.corvaneTopDay[k] = corvane[0];
      v.corvaneLowDay[k] = corvane[1];
      v.corvaneBreakDay[k] = corvane[2];
    }
  }

  bool SameBoxes(const FoundBoxes& other) const {
    return boxCount == other.boxCount && boxes == other.boxes;
  }
};

// What a thread made of one stock.
struct Outcome {
  std::string path;
  bool found = false;
  data::SeriesCopy series;  // the loaded bars, and the bars the engine read past them
  FoundBoxes boxes;
  engine::BackTester::RunState state{};
  std::string log;
  std::string results;
  bool unusualVolumeFound = false;
  bool unusualVolumeSearched = false;
};

// Backtests stock i, in tester's view, with every setting of walk.also, stopping at an error.
void BacktestAlso(const StockWalk& walk, engine::BackTester& tester, int i) {
  // The pass writes the row when it is walked; here it is only made, where the work is shared.
  engine::BacktestOptions options = *walk.backtest;
  options.rowWrittenLater = true;
  const bool rows = options.partOfListRun && !options.signalMode;
  PassOutcomes& outcomes = *walk.alsoInto;
  const auto stock = static_cast<size_t>(i);
  platform::StringSink& text = outcomes.text(stock);
  text.Clear();
  const LogRedirect log(tester, text);
  // Every pass searches the same stock for unusual volume: each search is made once.
  tester.RememberSearches(true);
  for (size_t k = 0; k < walk.also.size(); ++k) {
    PassOutcome& o = outcomes.at(stock, k);
    tester.unusualVolumeFound = false;
    o.error = nullptr;
    int code = 0;
    try {
      code = tester.Backtest(walk.also[k], options);
    } catch (...) {
      o.error = std::current_exception();
    }
    o.state = tester.runState();
    o.unusualVolumeFound = tester.unusualVolumeFound;
    o.unusualVolumeSearched = tester.unusualVolumeSearched;
    outcomes.KeepRow(stock, k, rows && !o.error ? tester.ResultRow(code) : std::string());
    if (o.error) break;
  }
  tester.RememberSearches(false);
}

// The later passes of a sweep on the session's view, by an engine of their own that keeps the
// log when the session's does.
void AlsoOnSession(Session& s, const StockWalk& walk, int i) {
  if (walk.also.empty()) return;
  platform::StringSink none;
  engine::BackTester tester(s.view(), none, none);
  tester.KeepLog(s.tester().keepsLog());
  BacktestAlso(walk, tester, i);
}

// What the walk's stocks share, fixed before the first: the folder's names, whether boxes are
// drawn (the settings may change as stocks are taken up) and the backtest's settings.
struct WalkSetup {
  platform::FolderNames names;
  bool drawBoxes;
  engine::TradingSettings trading;
};

bool Load(const StockWalk& walk, engine::StockView& v, const std::string& path,
          const platform::FolderNames& names) {
  return walk.cache != nullptr ? walk.cache->Load(v, path, &names)
                               : data::LoadStockFile(v, path, &names);
}

// Stock i as one thread does it, on the session's own view and engine.
void WalkOne(Session& s, const StockWalk& walk, const WalkSetup& setup, int i) {
  engine::StockView& v = s.view();
  if (!Load(walk, v, s.StockPath(s.symbols[static_cast<size_t>(i)]), setup.names)) {
    walk.missing();
    return;
  }
  engine::ComputeBoxes(v, setup.drawBoxes);
  if (walk.backtest) {
    BacktestOnSession(s, setup.trading, *walk.backtest);
    AlsoOnSession(s, walk, i);
  }
  walk.loaded();
}

// Fills o (which holds what an earlier stock left) with what this thread makes of stock i.
void Compute(const Session& s, const StockWalk& walk, const WalkSetup& setup, Worker& w, int i,
             Outcome& o) {
  o.path = s.StockPath(s.symbols[static_cast<size_t>(i)]);
  engine::StockView& v = *w.view;
  o.found = Load(walk, v, o.path, setup.names);
  if (!o.found) return;
  o.series.Keep(v, engine::BackTester::DaysRead(v));
  engine::ComputeBoxes(v, setup.drawBoxes);
  o.boxes.Keep(v);
  if (!walk.backtest) return;
  w.tester.unusualVolumeFound = false;
  w.log.Clear();
  w.results.Clear();
  w.tester.Backtest(setup.trading, *walk.backtest);
  o.state = w.tester.runState();
  o.log = w.log.text();
  o.results = w.results.text();
  o.unusualVolumeFound = w.tester.unusualVolumeFound;
  o.unusualVolumeSearched = w.tester.unusualVolumeSearched;
  if (!walk.also.empty()) BacktestAlso(walk, w.tester, i);
}

// Hands a stock a thread did over to the session, as if the session had done it.
void Take(Session& s, const StockWalk& walk, const WalkSetup& setup, int i, Outcome& o) {
  engine::StockView& v = s.view();
  if (!o.found) {
    v.stockFilePath = o.path;
    v.stockSymbol = data::SymbolOfPath(o.path);
    v.barCount = 0;
    walk.missing();
    return;
  }
  o.series.Restore(o.path, v);
  engine::BackTester& tester = s.tester();
  // The finders and the engine read the bars past a short history: those the thread's view held
  // are the session's, or the stock is done again here.
  bool same = o.series.SameBeyondLoaded(v);
  if (same && setup.drawBoxes) {
    o.boxes.PutDrawn(v);
  } else {
    // Not drawn, the open box keeps the breakout mark an earlier stock left: compared too.
    engine::ComputeBoxes(v, setup.drawBoxes);
    same = same && o.boxes.SameBoxes(FoundBoxes(v));
  }
  if (!walk.backtest || !same) {
    if (walk.backtest) {
      BacktestOnSession(s, setup.trading, *walk.backtest);
      AlsoOnSession(s, walk, i);
    }
    walk.loaded();
    return;
  }
  s.log().Append(o.log);
  tester.results().Append(o.results);
  tester.SetRunState(o.state);
  if (walk.backtest->partOfListRun && !walk.backtest->signalMode) tester.AddToTotals();
  if (o.unusualVolumeFound) tester.unusualVolumeFound = true;
  tester.unusualVolumeSearched = o.unusualVolumeSearched;
  if (o.unusualVolumeSearched) engine::KeepSearchPercentage(s.config);
  walk.loaded();
}

}  // namespace

int ListJobs(const settings::Config& config) {
  return config.jobs >= 1 ? config.jobs : platform::MachineCores();
}

int BacktestOnSession(Session& s, const engine::TradingSettings& trading,
                      const engine::BacktestOptions& options) {
  engine::BackTester& tester = s.tester();
  try {
    tester.Backtest(trading, options);
  } catch (...) {
    if (tester.unusualVolumeSearched) engine::KeepSearchPercentage(s.config);
    throw;
  }
  if (tester.unusualVolumeSearched) engine::KeepSearchPercentage(s.config);
  return tester.resultCode;
}

bool WalkStocks(Session& s, const StockWalk& walk) {
  const int n = static_cast<int>(s.symbols.size());
  const int jobs = std::min(walk.jobs > 0 ? walk.jobs : ListJobs(s.config), n);
  // The folder is listed once for the whole walk, on the first symbol missing under its own
  // spelling.
  const WalkSetup setup{
      .names = platform::FolderNames(s.config.StockFilePath),
      .drawBoxes = s.config.enableGraphUpdate,
      .trading = walk.trading ? *walk.trading : engine::TradingSettingsOf(s.config)};
  if (jobs <= 1) {
    for (int i = 0; i < n; ++i) {
      if (!walk.before(i)) return false;
      WalkOne(s, walk, setup, i);
    }
    return true;
  }
  const bool keepLog = s.tester().keepsLog();
  return platform::TakeInOrder<Outcome>(
      n, jobs, [&] { return std::make_unique<Worker>(s.view(), keepLog); },
      [&](Worker& w, int i, Outcome& o) { Compute(s, walk, setup, w, i, o); },
      [&](int i, Outcome* o) {
        if (!walk.before(i)) return false;
        o != nullptr ? Take(s, walk, setup, i, *o) : WalkOne(s, walk, setup, i);
        return true;
      });
}

}  // namespace halvard::runs
