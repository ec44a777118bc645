#include "halvard/runs/session.h"

#include "halvard/chart/draw_boxes.h"
#include "halvard/chart/update_view.h"
#include "halvard/data/file_parser.h"
#include "halvard/data/symbol_name.h"
#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/runs/stock_walk.h"

namespace halvard::runs {

Session::Session(settings::MRegistry store)
    : store_(std::move(store)),
      view_(std::make_unique<engine::StockView>()),
      tester_(*view_, log_, results_) {}

bool Session::StartUp() {
  config.showRS = true;
  config.rsCheckEnabled = true;
  config.rsDayCurr = 10;
  return LoadIndex();
}

bool Session::LoadIndex() {
  const bool found =
      data::LoadIndexFile(*view_, config.StockFilePath + "/" + std::string(data::kIndexFileName));
  if (!found) config.showRS = false;
  return found;
}

int Session::BacktestShown(bool signalMode) {
  return BacktestOnSession(*this, engine::TradingSettingsOf(config),
                           {.signalMode = signalMode,
                            .tryCorvanes = true,
                            .tryBoxes = true,
                            .rsEnabled = config.rsCheckEnabled});
}

std::string Session::StockPath(const std::string& symbol) const {
  data::RequireSymbolName(symbol);
  return config.StockFilePath + "/" + symbol + ".txt";
}

bool Session::ShowSymbol(const std::string& symbol) {
  loadFailed_ = true;
  chart.title = std::string(engine::ViewTitle(config.currentView)) + symbol;
  statusText.clear();
  if (!data::LoadStockFile(*view_, StockPath(symbol))) return false;
  loadFailed_ = false;
  if (config.showRS) {
    engine::ComputeRSLine(*view_);
    rsLineFile_ = view_->stockFilePath;
  }
  chartReady = true;
  return true;
}

bool Session::drawable() const {
  return chartReady && !loadFailed_ && view_->barCount > 0;
}

std::string Session::ShownLastBox() const {
  const engine::StockView& v = *view_;
  if (v.boxCount == 0) return {};
  const int k = v.boxCount - 1;
  if (v.boxTopDay[k] >= v.barCount || v.boxBottomDay[k] >= v.barCount) return {};
  return v.lastBoxText;
}

void Session::ShowView() {
  ShowViewOn(nullptr);
}

void Session::ShowView(chart::Canvas& canvas) {
  ShowViewOn(&canvas);
}

void Session::ShowViewOn(chart::Canvas* canvas) {
  if (!chartReady) {
    if (canvas != nullptr) canvas->clear();
    return;
  }
  // The boxes are computed as the window would draw them even over a series that is not shown,
  // so the engine sees the same state whatever the window shows.
  const bool shown = canvas != nullptr && drawable();
  if (canvas != nullptr) canvas->clear();
  if (canvas != nullptr && !shown) {
    chart.title = std::string(engine::ViewTitle(config.currentView)) + view_->stockSymbol;
    statusText.clear();
  }
  const int days = dayCount();
  if (days == 0) {
    throw UsageError("the current view setting is " + std::to_string(config.currentView) +
                     "; choose a view from 1 to 5");
  }
  engine::SetViewDays(*view_, days);
  engine::ComputeBoxes(*view_, true);
  if (shown) Draw(*canvas);
}

bool Session::DrawLoaded(chart::Canvas& canvas) {
  if (view_->barCount == 0) return false;
  Draw(canvas);
  return true;
}

void Session::Draw(chart::Canvas& canvas) {
  // Runs over a list load stock after stock but keep the RS line of the symbol shown.
  chart::UpdateView(chart, *view_, config, canvas, rsLineFile_ == view_->stockFilePath);
  chart::DrawBoxes(chart, *view_, canvas);
  // The status bar joins a second field of the window with a space; nothing ever fills it.
  statusText = chart.status + ShownLastBox() + " ";
}

void Session::SelectList(const std::string& name) {
  symbols = data::ReadWatchList(data::WatchListPath(config.IncFilePath, name), data::Quotes::kStrip,
                                data::Names::kSymbols);
  listName = name;
  if (!symbols.empty()) ShowSymbol(symbols[0]);
  ShowView();
}

fundamentals::StockDataStore& Session::stockDb(Access access) {
  const bool write = access == Access::kWrite;
  if (!stockDb_ || (write && !stockDbWritable_)) {
    const auto path = std::filesystem::path(config.IncFilePath) / "stockdata.mdb";
    stockDb_ = std::make_unique<fundamentals::StockDataStore>();
    write ? stockDb_->Init(path) : stockDb_->InitReadOnly(path);
    stockDbWritable_ = write;
  }
  return *stockDb_;
}

fundamentals::EPSStore& Session::epsStore() {
  if (!epsStore_) {
    auto store = std::make_unique<fundamentals::EPSStore>();
    store->ReadEPSData(std::filesystem::path(config.StockFilePath) / "eps.dat");
    epsStore_ = std::move(store);
  }
  return *epsStore_;
}

}  // namespace halvard::runs
