#include "halvard/engine/back_tester.h"

#include <algorithm>

#include "halvard/platform/date_text.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::engine {

BackTester::BackTester(StockView& view, platform::TextSink& log, platform::TextSink& results)
    : v_(view), log_(&log), results_(&results) {}

void BackTester::AppendLog(std::string_view text) {
  if (!logKept_) return;
  log_->Append(text);
  log_->Append("\r\n");
}

std::string BackTester::Date(int day) const {
  return platform::FormatShortDate(v_.barDate[day]);
}

int BackTester::Backtest(const TradingSettings& settings, const BacktestOptions& options) {
  totalProfit = 0;
  tradeCount = 0;
  sharesHeld = 0;
  amountInvested = 0;
  amountReturned = 0;
  buyArmed = false;
  buyArmedDate = 0;
  stopLossHit = false;
  lastStopBuy = 0;
  lastStopLoss = 0;
  exitCount = 0;
  fills.clear();
  unusualVolumeSearched = false;

  const auto& [partOfListRun, signalMode, tryCorvanes, tryBoxes, rsEnabled, rowLater] = options;
  if (!partOfListRun) {
    AppendLog(settings.buyMode == 1 ? "Buy Mode = BoxTops" : "Buy Mode = Bounce");
  }
  Log([&] { return "Backtesting - " + v_.stockSymbol; });
  int code = 0;
  if (tryCorvanes && TryCorvanes(settings, signalMode, rsEnabled)) {
    code = 2;
  } else if (tryBoxes) {
    TryBoxes(settings, signalMode, rsEnabled);
    code = settings.useUnusualVolume ? 1 : 3;
  }
  resultCode = code;
  if (partOfListRun && !signalMode && !rowLater) WriteResultRow(code);
  return code;
}

bool BackTester::TryCorvanes(const TradingSettings& settings, bool signalMode, bool rsEnabled) {
  AppendLog("Trying with Corvanes");
  AppendLog("----------------------");
  if (v_.corvaneCount == 0) {
    AppendLog("Corvane not found");
    return false;
  }
  RunTrade(settings, 0, 2, signalMode, rsEnabled);
  totalProfit += amountReturned - amountInvested;
  return true;
}

void BackTester::TryBoxes(const TradingSettings& settings, bool signalMode, bool rsEnabled) {
  AppendLog("Trying with Unusual Volume");
  AppendLog("--------------------------");
  int day = v_.viewDays - 1;
  for (;;) {
    if (settings.useUnusualVolume) {
      AppendLog("Checking for Unusual Volume");
      const int found = FindUnusualVolume(day, settings.unusualVolumePercentage);
      if (found == 0) {
        AppendLog("Unusual Volume Not Found");
        return;
      }
      Log([&] { return "Unusual Volume Found on " + Date(found); });
      day = RunTrade(settings, found, 1, signalMode, rsEnabled);
    } else {
      AppendLog("Checking for Pyramiding boxes");
      day = RunTrade(settings, day, 1, signalMode, rsEnabled);
    }
    totalProfit += amountReturned - amountInvested;
    if (amountReturned > 0) ++exitCount;
    if (day == 0 || exitCount >= 2) return;
  }
}

void BackTester::RememberSearches(bool on) {
  remember_ = on;
  remembered_.fill(-1);
}

int BackTester::FindUnusualVolume(int fromDay, double percentage) {
  unusualVolumeSearched = true;
  if (fromDay > kUnusualVolumeDays) fromDay = kUnusualVolumeDays;
  const bool remembered = remember_ && fromDay >= 0;
  if (remembered && percentage != rememberedPercentage_) {
    remembered_.fill(-1);
    rememberedPercentage_ = percentage;
  }
  int16_t& answer = remembered_[static_cast<size_t>(std::max(fromDay, 0))];
  if (!remembered || answer < 0) {
    const int found = SearchUnusualVolume(fromDay, percentage);
    if (!remembered) {
      if (found != 0) unusualVolumeFound = true;
      return found;
    }
    answer = static_cast<int16_t>(found);
  }
  if (answer != 0) unusualVolumeFound = true;
  return answer;
}

int BackTester::SearchUnusualVolume(int fromDay, double percentage) const {
  double total = v_.averageVolume * 23 * 6;
  double count = 138;
  const auto& volume = v_.barVolume;
  const auto& close = v_.barClose;
  for (int i = fromDay - 1; i >= 4; --i) {
    total += static_cast<double>(volume[i]);
    count += 1;
    const double threshold = (total / count) * (1 + percentage);
    if (!(volume[i - 1] > threshold && volume[i - 2] > threshold && volume[i - 3] > threshold)) {
      continue;
    }
    // The mean close of the three loud days against the day and the four before it (fewer
    // when the file ends sooner).
    const int last = std::min(i + 4, v_.barCount - 1);
    if (last < i) continue;
    double earlier = 0;
    for (int k = i; k <= last; ++k) earlier += close[k];
    earlier /= last - i + 1;
    const double later = (close[i - 1] + close[i - 2] + close[i - 3]) / 3;
    if (later > earlier) return i;
  }
  return 0;
}

bool BackTester::RSCheck(int day, int days, bool enabled) const {
  if (!enabled || !v_.rsAvailable) return true;
  const int n = days;
  // The line holds 366 days: a comparison reaching beyond it fails rather than reading past it.
  if (day < 0 || day + n >= StockView::kRsValues || day + n < 0) return false;
  return v_.rsLine[day] - v_.rsLine[day + n] > 0 && day + n < v_.barCount;
}

std::string BackTester::ResultStatus() const {
  if (sharesHeld >= 1) return "Open";
  if (tradeCount != 0) {
    return amountReturned - amountInvested < 0 && exitCount == 2 ? "Burnt" : "Completed";
  }
  return "No Trades";
}

std::string BackTester::ResultRow(int code) const {
  std::string row = v_.stockSymbol;
  row += code == 2 ? "\tCorvane\t\t" : "\tPyramiding Boxes\t";
  row += std::to_string(tradeCount);
  row += '\t';
  row += platform::FormatMoney(totalProfit);
  row += "$\t\t";
  row += ResultStatus();
  row += "\t\r\n";
  return row;
}

void BackTester::WriteResultRow(int code) {
  results_->Append(ResultRow(code));
  AddToTotals();
}

void BackTester::AddToTotals() {
  if (totalProfit > 0) {
    winTotal += totalProfit;
    ++winCount;
  } else if (totalProfit < 0) {
    lossTotal += totalProfit;
    ++lossCount;
  }
  allTrades += tradeCount;
}

BackTester::RunState BackTester::runState() const {
  return {totalProfit, amountInvested, amountReturned, buyArmedDate, lastStopBuy, lastStopLoss,
          sharesHeld,  tradeCount,     exitCount,      resultCode,   buyArmed,    stopLossHit};
}

void BackTester::SetRunState(const RunState& r) {
  totalProfit = r.totalProfit;
  amountInvested = r.amountInvested;
  amountReturned = r.amountReturned;
  buyArmedDate = r.buyArmedDate;
  lastStopBuy = r.lastStopBuy;
  lastStopLoss = r.lastStopLoss;
  sharesHeld = r.sharesHeld;
  resultCode = r.resultCode;
  tradeCount = r.tradeCount;
  exitCount = r.exitCount;
  buyArmed = r.buyArmed;
  stopLossHit = r.stopLossHit;
}

int BackTester::DaysRead(const StockView& view) {
  return std::max(view.viewDays, kUnusualVolumeDays);
}

void BackTester::ResetTotals() {
  winTotal = 0;
  winCount = 0;
  lossTotal = 0;
  lossCount = 0;
  allTrades = 0;
}

}  // namespace halvard::engine
