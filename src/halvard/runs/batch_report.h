#pragma once
// Batch testing: every symbol of the session's list backtested, a table row per stock and a
// summary, repeated over the sweep levels with the most profitable combination reported.

#include <optional>
#include <string>
#include <vector>

#include "halvard/runs/list_report.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {

// One row of a batch's table: a stock the engine backtested, or one whose price file is
// missing (no catalyst, trades or profit; status "Error opening stock file").
struct BatchRow {
  std::string symbol;
  std::optional<std::string> catalyst;  // "Corvane" or "Pyramiding Boxes"
  std::optional<int> trades;
  std::optional<double> profit;
  std::string status;  // "Open", "Completed", "Burnt", "No Trades"
};

// One batch over the list, at one stop loss and RS days: its table and its summary.
struct BatchStep {
  double stopLoss = 0;
  int rsDays = 0;
  bool rsCheck = false;
  bool unusualVolume = false;
  std::vector<BatchRow> rows;
  int profitMakingStocks = 0;
  int lossMakingStocks = 0;
  int totalTrades = 0;
  double profitableTrades = 0;
  double losingTrades = 0;
  double totalProfit = 0;
  bool finished = false;  // false when the run stopped inside the batch: no summary yet
};

// A sweep's steps and its "Maximum profit" line: the levels it varied, the best of them.
struct BatchSweep {
  std::string varies;  // "both", "stopLoss" or "rsDays"
  std::vector<BatchStep> steps;
  double maximumProfit = 0;
  std::optional<double> bestStopLoss;  // of a sweep that varies the stop loss
  std::optional<int> bestRsDays;       // of a sweep that varies the RS days
  bool finished = false;               // false when cancelled before its maximum
};

// What the report's text says, as values: one sweep for GoCommand, two for RunBatch.
struct BatchResult {
  std::string list;
  int buyMode = 0;
  std::vector<BatchSweep> sweeps;
};

// The sweeps' choice of the most profitable level: a total wins only when it is strictly above 0
// and above every total offered before it, so the first of equal totals keeps the place.
struct MostProfitableSoFar {
  double best = 0;
  // True when total is the new best.
  bool Offer(double total) {
    if (!(total - best > 0)) return false;
    best = total;
    return true;
  }
};

class BatchReport : public ListReport {
 public:
  BatchReport(Session& session, platform::Progress& progress) : ListReport(session, progress) {}

  // One batch over the list with the settings' levels: the table and its summary.
  void BatchCore(const RunSwitches& switches);
  // The same at the levels of pass.
  void BatchCore(const RunSwitches& switches, const engine::TradingSettings& pass);
  // Both ranges nested, with the best combination at the end.
  void GoCommand(const RunSwitches& switches);
  // The stop-loss range, then separately the RS-days range (with the stop loss the first half
  // left), each with its best level.
  void RunBatch(const RunSwitches& switches);

  // The symbols the engine traded, one for every batch that traded them, each with CR LF.
  const std::string& tradedList() const { return tradedList_; }

  // The runs of this report so far, as values. Without rows when they are not kept: a big sweep
  // has millions, and the text holds them too.
  const BatchResult& result() const { return result_; }
  void KeepRows(bool keep) { keepRows_ = keep; }

 private:
  // Runs one batch at the levels of pass as step k of n; returns its total profit, or nothing
  // when cancelled.
  std::optional<double> Step(int k, int n, const RunSwitches& switches,
                             const engine::TradingSettings& pass);

  // Starts a sweep in the result and returns it.
  BatchSweep& NewSweep(std::string varies);

  std::string tradedList_;
  BatchResult result_;
  bool keepRows_ = true;
};

}  // namespace halvard::runs
