#pragma once
// The live trading report: for every symbol of the session's list, what to do on the next
// trading day (buy, with the stop-buy and stop-loss prices, or skip), repeated over the sweep
// levels. The report grows across runs, as the window's text does until it is closed; beside
// its text it keeps every pass as values, for the JSON document and the daily report.

#include <string>
#include <vector>

#include "halvard/platform/clock.h"
#include "halvard/runs/list_report.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {

// One row of a pass, as its text line says it.
struct LiveRow {
  enum class Action { kBuy, kSkip, kNoPrices };  // kNoPrices: "Error opening stock file "
  std::string symbol;
  Action action = Action::kSkip;
  double newestDate = 0;  // the newest day of the price file (0 for kNoPrices)
  // kBuy only: the signal date and the two levels, as the engine left them.
  double signalDate = 0;
  double stopBuy = 0;
  double stopLoss = 0;
};

// One pass: its header's values and its rows in list order.
struct LivePass {
  double date = 0;  // "Starting Live Trading on"
  std::string listName;
  double stopLossLimit = 0;  // the pass's levels
  int rsDays = 0;
  bool rsCheck = false;        // "RS Check is Enabled"
  bool unusualVolume = false;  // "Unusual Volume Check is Enabled "
  int buyMode = 1;             // 1 "BoxTops", else "Bounce"
  std::vector<LiveRow> rows;
};

class LiveReport : public ListReport {
 public:
  // The report is dated today (a serial date).
  LiveReport(Session& session, platform::Progress& progress, double today = platform::Today());

  // The whole sweep: a header, then one pass per level combination (none for an empty list).
  void Run(const RunSwitches& switches);
  // One pass over the list with the settings' levels.
  void RunLive(const RunSwitches& switches);
  // The same at the levels of trading.
  void RunLive(const RunSwitches& switches, const engine::TradingSettings& trading);

  // The symbols of the last pass that got a "Buy" row, each followed by CR LF.
  const std::string& buyList() const { return buyList_; }
  // Every pass so far, oldest first (a cancelled pass holds the rows it reached).
  const std::vector<LivePass>& passes() const { return passes_; }
  double today() const { return today_; }
  const std::string& listName() const { return s_.listName; }

 private:
  double today_;
  std::string buyList_;
  std::vector<LivePass> passes_;
};

}  // namespace halvard::runs
