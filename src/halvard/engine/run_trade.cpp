// The trade engine: one trade from its starting box to a sale, a signal or the newest day.

#include <cmath>

#include "halvard/engine/back_tester.h"
#include "halvard/error.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::engine {
namespace {

using platform::FormatGeneral;

constexpr int kCapital = 10000;   // dollars at the start of every trade
constexpr int kBuyAmount = 5000;  // each buy spends half of it
constexpr double kStopBuyMargin = 0.125;
constexpr int16_t kPassedOver = 2;  // a box marked so never takes part in a trade
// The most shares one buy may take (any price above $0.000000000005), so that the thousand
// buys a series can hold never overflow the count of shares held.
constexpr double kMaxSharesPerBuy = 1e15;

}  // namespace

int BackTester::FirstCorvaneBox() {
  if (v_.corvaneCount < 1) return -1;
  for (int k = 0; k < v_.boxCount; ++k) {
    if (v_.boxTopDay[k] <= v_.corvaneBreakDay[0] && v_.boxBrokeUp[k] == 1) return k;
  }
  return -1;
}

int BackTester::FirstPyramidingBox(int startDay, double stopLossLimit) {
  // From the first box still active on the start day, the first pair whose newer bottom is no
  // more than the stop-loss distance below the older one.
  int k = 0;
  while (k < v_.boxCount && v_.boxEndDay[k] > startDay) ++k;
  for (; k + 1 < v_.boxCount; ++k) {
    const int m = k + 1;
    const double older = v_.barLow[v_.boxBottomDay[k]];
    const double newer = v_.barLow[v_.boxBottomDay[m]];
    if ((newer - older) + stopLossLimit > 0 && v_.boxBrokeUp[k] != kPassedOver &&
        v_.boxBrokeUp[m] != kPassedOver) {
      Log([&] {
        return "Pyramiding boxes found on " + Date(v_.boxTopDay[k]) + " - " +
               Date(v_.boxTopDay[m]) + "," + FormatGeneral(older);
      });
      return m;
    }
  }
  return -1;
}

int BackTester::RunTrade(const TradingSettings& settings, int startDay, int mode, bool signalMode,
                         bool rsEnabled) {
  amountInvested = 0;
  amountReturned = 0;
  const bool boxTops = settings.buyMode == 1;
  const bool bounce = settings.buyMode == 2;
  const auto& high = v_.barHigh;
  const auto& low = v_.barLow;

  int box = -1;
  if (mode == 2) {
    box = FirstCorvaneBox();
    if (box >= 0) {
      Log([&] {
        return "First box found on " + Date(v_.boxTopDay[box]) + " - " +
               FormatGeneral(high[v_.boxTopDay[box]]) + "," +
               FormatGeneral(low[v_.boxBottomDay[box]]);
      });
    }
  } else {
    box = FirstPyramidingBox(startDay, settings.stopLossLimit);
  }
  if (box < 0) {
    AppendLog("Sufficient boxes not found. Not taking any action.");
    return 0;
  }

  int capital = kCapital;
  double stopBuy = high[v_.boxTopDay[box]] + kStopBuyMargin;
  double stopLoss = std::max(0.0, low[v_.boxBottomDay[box]] - settings.stopLossLimit);
  const auto leave = [&](int day) {
    lastStopBuy = stopBuy;
    lastStopLoss = stopLoss;
    return day;
  };

  const int firstDay = v_.boxBottomDay[box] - 1;
  if (RSCheck(firstDay, settings.rsDays, rsEnabled)) {
    buyArmed = true;
    buyArmedDate = v_.barDate[firstDay];
  }
  if (boxTops) Log([&] { return "Buy signal set at - " + FormatGeneral(stopBuy); });
  if (signalMode) Log([&] { return "Found a buy position, turning on buy on " + Date(firstDay); });
  Log([&] { return "Sell signal set at - " + FormatGeneral(stopLoss); });

  bool armed = true;  // a fresh box allows one more buy
  bool sold = false;
  int day = firstDay;
  for (; day >= 0; --day) {
    const int i = day;
    if (box >= 1 && v_.boxEndDay[box - 1] == i && v_.boxTopDay[box] == i) armed = true;

    bool bought = false;
    const auto buy = [&](double price) {
      // A bounce at a close of 0 (or a stop-buy from a broken series) has no share count.
      if (!(price > 0) || !(kBuyAmount / price <= kMaxSharesPerBuy)) {
        throw Error(v_.stockFilePath + ": a buy at a price of " + FormatGeneral(price) + " on " +
                    Date(i) + " gives no share count (the price must be above 0 and buy at most " +
                    "10^15 shares)");
      }
      const auto shares = static_cast<int64_t>(std::trunc(kBuyAmount / price));
      Log([&] {
        return "Bought " + std::to_string(shares) + " at " + FormatGeneral(price) + " on " +
               Date(i);
      });
      fills.push_back({v_.barDate[i], true, shares, price});
      sharesHeld += shares;
      capital -= kBuyAmount;
      amountInvested += shares * price;
      ++tradeCount;
      armed = false;
      bought = true;
    };

    if (bounce && i + 3 >= StockView::kMaxBars) {
      throw Error(v_.stockFilePath + ": the bounce test of day " + std::to_string(i) +
                  " reads beyond the " + std::to_string(StockView::kMaxBars) + "-bar limit");
    }
    if (bounce && capital >= 1 && low[i] >= low[i + 1] && low[i + 2] >= low[i + 1] &&
        low[i + 3] >= low[i + 1]) {
      if (signalMode) {
        Log([&] { return "Price above stopbuy, turning off buy on " + Date(i); });
        buyArmed = false;
        return leave(i);
      }
      Log([&] { return "Found a bounce on " + Date(i); });
      buy(v_.barClose[i]);
    }

    if (boxTops && signalMode) {
      if (!(high[i] > stopBuy) && low[i] < stopLoss) {
        Log([&] { return "Price below stoploss turning off buy on " + Date(i); });
        stopLossHit = true;
        return leave(i);
      }
      if (high[i] > stopBuy) {
        if (RSCheck(i, settings.rsDays, rsEnabled)) {
          Log([&] { return "Price above stopbuy, turning off buy on " + Date(i); });
          return leave(i);
        }
        Log([&] { return "Skipped buy signal on " + Date(i) + " because RS condition not met"; });
      }
    }

    if (boxTops && !signalMode) {
      if (high[i] > stopBuy && capital >= 1 && armed) {
        if (RSCheck(i, settings.rsDays, rsEnabled)) {
          buy(stopBuy);
        } else {
          Log([&] { return "Skipped buy signal on " + Date(i) + " because RS condition not met"; });
        }
      }
      if (!bought && sharesHeld > 0) {
        const double price = v_.barOpen[i] < stopLoss ? v_.barOpen[i]
                             : low[i] < stopLoss      ? stopLoss
                                                      : -1;
        if (price >= 0) {
          Log([&] {
            return "Sold " + std::to_string(sharesHeld) + " at " + FormatGeneral(price) + " on " +
                   Date(i);
          });
          fills.push_back({v_.barDate[i], false, sharesHeld, price});
          amountReturned += sharesHeld * price;
          sharesHeld = 0;
          ++tradeCount;
          sold = true;
          break;
        }
      }
    }

    const int next = box + 1;
    if (next < v_.boxCount && v_.boxTopDay[next] == i && v_.boxBrokeUp[next] != kPassedOver) {
      const double top = high[v_.boxTopDay[next]];
      const double bottom = low[v_.boxBottomDay[next]];
      Log([&] {
        return "New box found on " + Date(i) + " - " + FormatGeneral(top) + "," +
               FormatGeneral(bottom);
      });
      armed = true;
      if (capital >= 1) {
        stopBuy = top + kStopBuyMargin;
        if (boxTops) Log([&] { return "Buy signal set at - " + FormatGeneral(stopBuy); });
        if (signalMode) {
          buyArmed = true;
          buyArmedDate = v_.barDate[i];
          Log([&] { return "Found a buy position, turning on buy on " + Date(i); });
        }
      }
      if (bottom - settings.stopLossLimit > stopLoss) {
        stopLoss = bottom - settings.stopLossLimit;
        Log([&] { return "Sell signal set at - " + FormatGeneral(stopLoss); });
      }
      box = next;
      // A following box whose top is already behind us can no longer start.
      while (box + 1 < v_.boxCount && v_.boxTopDay[box + 1] > i) ++box;
    }
  }

  if (!sold) {
    amountReturned = sharesHeld * v_.barClose[0];
    Log([&] { return "Holding shares worth " + platform::FormatMoney(amountReturned) + "$"; });
  }
  Log([&] {
    return "Profit/Loss = " + platform::FormatMoney(amountReturned - amountInvested) + "$";
  });
  return leave(sold ? day : 0);
}

}  // namespace halvard::engine
