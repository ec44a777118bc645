#pragma once
// Session: what the main window owns and both front ends drive: the settings, the chosen watch
// list and its symbols, the shown symbol (whose RS line the engine reads), whether it may be
// drawn, and the engine with its panes. A run over a list starts from the state the main window
// has after selecting that list.

#include <memory>
#include <string>
#include <vector>

#include "halvard/chart/canvas.h"
#include "halvard/chart/chart.h"
#include "halvard/engine/back_tester.h"
#include "halvard/engine/stock_view.h"
#include "halvard/fundamentals/eps_store.h"
#include "halvard/fundamentals/stock_data_store.h"
#include "halvard/platform/text_sink.h"
#include "halvard/settings/config.h"
#include "halvard/settings/registry.h"

namespace halvard::runs {

class Session {
 public:
  explicit Session(settings::MRegistry store);
  // The engine holds references into the session: it is neither copied nor moved.
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  settings::Config config;
  const settings::MRegistry& store() const { return store_; }
  engine::StockView& view() { return *view_; }
  const engine::StockView& view() const { return *view_; }
  engine::BackTester& tester() { return tester_; }
  // The backtest log pane: every engine line of every run lands here.
  platform::StringSink& log() { return log_; }

  bool chartReady = false;
  std::string listName;              // the watch list as the user named it
  std::vector<std::string> symbols;  // its symbols, in file order
  int hotListCursor = 0;

  // The chart on the main window's drawing surface (InitChart at start-up, LayOut on every
  // resize), and the status bar's second panel: the newest day and the newest box.
  chart::Chart chart;
  std::string statusText;

  void ReadSettings() { config.ReadConfig(store_); }
  void WriteSettings() const { config.WriteConfig(store_); }

  // What every start does after reading the settings: showRS and the RS check on, RS days 10,
  // whatever was stored; then the index file of the stock folder is loaded. Returns false when
  // the index file is missing (showRS is then off and the caller shows the message).
  bool StartUp();

  // Loads the index file of the stock folder into the view. When it is missing there is no RS
  // line to show: showRS is turned off and the answer is false.
  bool LoadIndex();

  // The price file of a symbol: the stock files folder, "/", the symbol, ".txt". A symbol that
  // is no name (data::SymbolProblem) is a halvard::Error before any file is touched.
  std::string StockPath(const std::string& symbol) const;

  // Loads the symbol as the main window shows it: on success the RS line is computed when
  // showRS is on and the chart becomes ready. Returns false when there is no price file; then,
  // as when the file does not load, nothing of the series in memory is drawn again until a
  // symbol loads, the title names the symbol asked for and the status text is empty.
  bool ShowSymbol(const std::string& symbol);

  // True when the chart is ready and the series in memory is a whole loaded symbol: what the
  // window draws. A failed load leaves the older symbol's bars behind, which never show under
  // the new name.
  bool drawable() const;

  // The backtest of the shown symbol as the "m" key runs it ("g" with signalMode): the "Buy Mode"
  // header, corvanes first, then the boxes, with the RS check as set. Returns the engine's
  // result code; the log pane holds the trade log.
  int BacktestShown(bool signalMode);

  // The chart of the shown symbol: when it is ready, the current view's days are set and the
  // boxes computed as they are drawn (the open box counts as broken up). A view outside 1 to 5
  // is a halvard::UsageError.
  void ShowView();
  // The same, drawn on the canvas: the current view, then its boxes and corvanes, and statusText
  // completed with the newest box. When the chart is not ready the canvas is only cleared; a
  // view outside 1 to 5 leaves it cleared before the halvard::UsageError.
  void ShowView(chart::Canvas& canvas);

  // Draws the series in memory as it stands, boxes as last computed, without computing anything:
  // how a run over a list shows each stock it loaded. False, the canvas untouched, when no bars
  // are loaded (the stock just tried had no price file).
  bool DrawLoaded(chart::Canvas& canvas);

  // Selects a watch list (NAME or NAME.inc in the watch-list folder) as the main window does:
  // its symbols are read, row 0 is shown when there is one, then the view. A missing list is a
  // halvard::Error.
  void SelectList(const std::string& name);

  // The stock database (stockdata.mdb in the watch-list folder) and the EPS lines (eps.dat in
  // the stock files folder), opened and read when first asked for, as the folders are then.
  // kRead opens the database for reading only, so that browsing works in a folder the user may
  // not write to (and creates no file while there is none); kWrite (re)opens it for writing.
  enum class Access { kRead, kWrite };
  fundamentals::StockDataStore& stockDb(Access access = Access::kWrite);
  fundamentals::EPSStore& epsStore();

  // The days of the current view (5, 23, 69, 138 or 276).
  int dayCount() const { return engine::ViewDayCount(config.currentView); }

 private:
  void ShowViewOn(chart::Canvas* canvas);
  // The view, its boxes and corvanes, and the status text completed with the newest box.
  void Draw(chart::Canvas& canvas);
  // "top,bottom" of the newest box when it lies within the loaded bars, else empty.
  std::string ShownLastBox() const;

  settings::MRegistry store_;
  std::unique_ptr<engine::StockView> view_;  // large: the arrays hold 1001 bars and 31001 closes
  platform::StringSink log_;
  bool loadFailed_ = false;       // the last symbol asked for did not load
  std::string rsLineFile_;        // the price file the RS line was computed for
  platform::StringSink results_;  // result rows of single backtests, which nobody shows
  engine::BackTester tester_;
  std::unique_ptr<fundamentals::StockDataStore> stockDb_;
  bool stockDbWritable_ = false;
  std::unique_ptr<fundamentals::EPSStore> epsStore_;
};

}  // namespace halvard::runs
