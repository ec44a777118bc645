#pragma once
// BackTester: turns the boxes of the loaded symbol into simulated trades and a readable trade
// log. One backtest may hold several trades; each trade buys on a breakout above a stop-buy level
// (box top + 1/8) or on a bounce, and sells when price falls below a stop loss that only ever
// rises with new boxes. In signal mode nothing is bought: the run stops on the first day that
// would have bought or stopped out, leaving the levels and flags the live report prints.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/engine/stock_view.h"
#include "halvard/engine/trading_settings.h"
#include "halvard/platform/text_sink.h"

namespace halvard::engine {

// What one backtest tries and how; every field is off unless set.
struct BacktestOptions {
  bool partOfListRun = false;  // no "Buy Mode" header; in simulation a result row per stock
  bool signalMode = false;     // stop at the first signal instead of trading
  bool tryCorvanes = false;    // trade from the first box after the first corvane
  bool tryBoxes = false;       // when no corvane traded: the pyramiding boxes
  bool rsEnabled = false;      // buy only while the RS line rises
  // A list run's result row is made and written later by the caller (ResultRow, AddToTotals):
  // the engine neither writes it nor adds to the totals.
  bool rowWrittenLater = false;
};

// A buy or a sale of the trade log ("Bought 347 at 28.82 on 1/3/2017").
struct Fill {
  double date = 0;
  bool bought = false;  // else sold
  int64_t shares = 0;
  double price = 0;
};

class BackTester {
 public:
  // Reads the series (and the RS line it holds) of view; the log and the result rows go to the
  // two sinks.
  BackTester(StockView& view, platform::TextSink& log, platform::TextSink& results);
  // It holds references into its owner: neither copied nor moved.
  BackTester(const BackTester&) = delete;
  BackTester& operator=(const BackTester&) = delete;

  // Result rows go to another pane from now on (the batch report writes its table this way).
  void SetResults(platform::TextSink& results) { results_ = &results; }
  platform::TextSink& results() const { return *results_; }
  // The log goes elsewhere from now on (a backtest whose log is written later keeps it apart).
  void SetLog(platform::TextSink& log) { log_ = &log; }
  platform::TextSink& log() const { return *log_; }

  // A run whose log nobody reads says so: the engine then neither formats nor keeps it.
  void KeepLog(bool keep) { logKept_ = keep; }
  bool keepsLog() const { return logKept_; }

  // One backtest of the loaded symbol. Returns the result code: 2 when a corvane trade ran, else
  // 1 (with unusual volume) or 3 (without) when boxes were tried, 0 when nothing was tried. Only
  // a list run in simulation writes a result row.
  int Backtest(const TradingSettings& settings, const BacktestOptions& options);

  bool TryCorvanes(const TradingSettings& settings, bool signalMode, bool rsEnabled);
  void TryBoxes(const TradingSettings& settings, bool signalMode, bool rsEnabled);

  // The newest day before fromDay (searching back at most kUnusualVolumeDays days) on which
  // volume was unusual (percentage above the average) for three days running while the price
  // rose; 0 when there is none.
  int FindUnusualVolume(int fromDay, double percentage);
  static constexpr int kUnusualVolumeDays = 138;  // the newest six months
  // While on, each search's answer is kept and given again for the same day and percentage: for
  // the backtests of one loaded stock with other levels, which search from the same days. Turned
  // off (forgetting them) before the view changes.
  void RememberSearches(bool on);

  // The newest days the finders and a backtest of the view read: the view and the unusual-volume
  // search's six months. (A backtest of a shorter history reads bars past barCount.)
  static int DaysRead(const StockView& view);

  // Whether the RS line rose over the days ending on day (true when disabled or when there is
  // no index).
  bool RSCheck(int day, int days, bool enabled) const;

  // One trade from startDay (mode 2: from the first box after the first corvane; otherwise from
  // the first pyramiding pair of boxes). Returns the day it stopped on, 0 at the newest day.
  int RunTrade(const TradingSettings& settings, int startDay, int mode, bool signalMode,
               bool rsEnabled);

  // A line of the log, when it is kept.
  void AppendLog(std::string_view text);
  // The last backtest's result row (with its CR LF), for result code `code`.
  std::string ResultRow(int code) const;
  // The row written to the results and added to the totals.
  void WriteResultRow(int code);
  // The result row's status of the last backtest: "Open" (shares held), "Burnt" (a second exit
  // at a loss), "Completed" or "No Trades".
  std::string ResultStatus() const;

  // The last backtest's profit and trades added to the totals, as its result row does.
  void AddToTotals();

  // The run state below, as a value: a list run's threads each backtest on an engine of their
  // own and hand what it left to the session's engine.
  struct RunState {
    double totalProfit, amountInvested, amountReturned, buyArmedDate, lastStopBuy, lastStopLoss;
    int64_t sharesHeld;
    int tradeCount, exitCount, resultCode;
    bool buyArmed, stopLossHit;
  };
  RunState runState() const;
  void SetRunState(const RunState& state);

  // Run state, reset by every Backtest.
  int resultCode = 0;  // what the last Backtest returned
  double totalProfit = 0;
  int tradeCount = 0;
  int64_t sharesHeld = 0;     // 64-bit: a long run of buys at a few cents adds up
  double amountInvested = 0;  // of the current trade
  double amountReturned = 0;  // of the current trade
  bool buyArmed = false;      // a buy signal is pending
  double buyArmedDate = 0;
  bool stopLossHit = false;
  double lastStopBuy = 0;
  double lastStopLoss = 0;
  int exitCount = 0;
  std::vector<Fill> fills;  // the buys and sales, in the log's order
  // Whether an unusual-volume search ran: the caller then keeps the percentage it searched with
  // in the settings (KeepSearchPercentage).
  bool unusualVolumeSearched = false;

  // Set by a successful unusual-volume search and never cleared.
  bool unusualVolumeFound = false;

  // Totals over the backtests of a list run, for the batch summary.
  double winTotal = 0;
  int winCount = 0;
  double lossTotal = 0;
  int lossCount = 0;
  int allTrades = 0;
  void ResetTotals();

 private:
  // Where a trade starts: the box it trades, or -1 when there is none.
  int FirstCorvaneBox();
  int FirstPyramidingBox(int startDay, double stopLossLimit);
  std::string Date(int day) const;
  // A line whose text costs formatting: text() runs only when the log is kept.
  template <class Text>
  void Log(const Text& text) {
    if (logKept_) AppendLog(text());
  }

  int SearchUnusualVolume(int fromDay, double percentage) const;

  bool remember_ = false;
  double rememberedPercentage_ = 0;
  std::array<int16_t, kUnusualVolumeDays + 1> remembered_{};  // by fromDay; -1 not searched

  StockView& v_;
  platform::TextSink* log_;
  platform::TextSink* results_;
  bool logKept_ = true;
};

}  // namespace halvard::engine
