#include "halvard/runs/stock_walk.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "halvard/data/file_parser.h"
#include "halvard/data/series_copy.h"
#include "halvard/platform/folder_names.h"
#include "halvard/platform/ordered_work.h"

namespace halvard::runs {
namespace {

// One thread's own view (holding the session's RS line and view length), settings and engine
// with its own log and result panes.
struct Worker {
  explicit Worker(const Session& s) : config(s.config), tester(*view, config, log, results) {
    const engine::StockView& shown = s.view();
    view->rsLine = shown.rsLine;
    view->rsAvailable = shown.rsAvailable;
    view->viewDays = shown.viewDays;
  }

  std::unique_ptr<engine::StockView> view = std::make_unique<engine::StockView>();
  settings::Config config;
  platform::StringSink log;
  platform::StringSink results;
  engine::BackTester tester;
};

// What a thread made of one stock.
struct Outcome {
  std::string path;
  bool found = false;
  data::SeriesCopy series;  // the loaded bars, and the bars the engine read past them
  int boxCount = 0;
  std::vector<int16_t> boxes;  // top, bottom, end and breakout mark of each box
  engine::BackTester::RunState state{};
  std::string log;
  std::string results;
  bool unusualVolumeFound = false;
  double unusualVolumePercentage = 0;
};

std::vector<int16_t> Boxes(const engine::StockView& v) {
  std::vector<int16_t> boxes;
  boxes.reserve(static_cast<size_t>(v.boxCount) * 4);
  for (int k = 0; k < v.boxCount; ++k) {
    boxes.insert(boxes.end(), {v.boxTopDay[k], v.boxBottomDay[k], v.boxEndDay[k], v.boxBrokeUp[k]});
  }
  return boxes;
}

bool Load(const StockWalk& walk, engine::StockView& v, const std::string& path,
          const platform::FolderNames& names) {
  return walk.cache != nullptr ? walk.cache->Load(v, path, &names)
                               : data::LoadStockFile(v, path, &names);
}

// Stock i as one thread does it, on the session's own view and engine.
void WalkOne(Session& s, const StockWalk& walk, const platform::FolderNames& names, int i) {
  engine::StockView& v = s.view();
  if (!Load(walk, v, s.StockPath(s.symbols[static_cast<size_t>(i)]), names)) {
    walk.missing();
    return;
  }
  engine::ComputeBoxes(v, s.config.enableGraphUpdate);
  if (walk.backtest) s.tester().Backtest(*walk.backtest);
  walk.loaded();
}

Outcome Compute(const Session& s, const StockWalk& walk, const platform::FolderNames& names,
                double percentage, Worker& w, int i) {
  Outcome o;
  o.path = s.StockPath(s.symbols[static_cast<size_t>(i)]);
  engine::StockView& v = *w.view;
  o.found = Load(walk, v, o.path, names);
  if (!o.found) return o;
  o.series.Keep(v, walk.backtest ? engine::BackTester::DaysRead(v) : v.barCount);
  if (!walk.backtest) return o;
  engine::ComputeBoxes(v, w.config.enableGraphUpdate);
  o.boxCount = v.boxCount;
  o.boxes = Boxes(v);
  w.config.unusualVolumePercentage = percentage;  // as the run started: the engine may set it
  w.tester.unusualVolumeFound = false;
  w.tester.Backtest(*walk.backtest);
  o.state = w.tester.runState();
  o.log = w.log.text();
  o.results = w.results.text();
  w.log.Clear();
  w.results.Clear();
  o.unusualVolumeFound = w.tester.unusualVolumeFound;
  o.unusualVolumePercentage = w.config.unusualVolumePercentage;
  return o;
}

// Hands a stock a thread did over to the session, as if the session had done it.
void Take(Session& s, const StockWalk& walk, Outcome& o) {
  engine::StockView& v = s.view();
  if (!o.found) {
    v.stockFilePath = o.path;
    v.stockSymbol = data::GetSymbol(o.path);
    v.barCount = 0;
    walk.missing();
    return;
  }
  o.series.Restore(o.path, v);
  engine::ComputeBoxes(v, s.config.enableGraphUpdate);
  if (!walk.backtest) {
    walk.loaded();
    return;
  }
  engine::BackTester& tester = s.tester();
  if (!o.series.SameBeyondLoaded(v) || o.boxCount != v.boxCount || o.boxes != Boxes(v)) {
    // The thread's view held other leftovers than the session's, and the engine read them.
    tester.Backtest(*walk.backtest);
    walk.loaded();
    return;
  }
  s.log().Append(o.log);
  tester.results().Append(o.results);
  tester.SetRunState(o.state);
  if (walk.backtest->partOfListRun && !walk.backtest->signalMode) tester.AddToTotals();
  if (o.unusualVolumeFound) tester.unusualVolumeFound = true;
  if (s.config.unusualVolumePercentage == 0) {
    s.config.unusualVolumePercentage = o.unusualVolumePercentage;
  }
  walk.loaded();
}

}  // namespace

int ListJobs(const settings::Config& config) {
  return config.jobs >= 1 ? config.jobs : platform::MachineCores();
}

bool WalkStocks(Session& s, const StockWalk& walk) {
  const int n = static_cast<int>(s.symbols.size());
  const int jobs = std::min(ListJobs(s.config), n);
  // Listed once for the whole walk, on the first symbol missing under its own spelling.
  const platform::FolderNames names(s.config.StockFilePath);
  if (jobs <= 1) {
    for (int i = 0; i < n; ++i) {
      if (!walk.before(i)) return false;
      WalkOne(s, walk, names, i);
    }
    return true;
  }
  const double percentage = s.config.unusualVolumePercentage;
  return platform::TakeInOrder<Outcome>(
      n, jobs, [&s] { return std::make_unique<Worker>(s); },
      [&](Worker& w, int i) { return Compute(s, walk, names, percentage, w, i); },
      [&](int i, Outcome* o) {
        if (!walk.before(i)) return false;
        o != nullptr ? Take(s, walk, *o) : WalkOne(s, walk, names, i);
        return true;
      });
}

}  // namespace halvard::runs
