#include "halvard/engine/back_tester.h"

#include <gtest/gtest.h>

#include <memory>

#include "halvard/platform/date_text.h"
#include "series.h"

namespace halvard::engine {
namespace {

using test::Day;
using test::FourBoxes;
using test::TwoBoxes;

class BacktestTest : public ::testing::Test {
 protected:
  void Load(const std::vector<Day>& oldestFirst) {
    const int n = static_cast<int>(oldestFirst.size());
    const double firstDate = *platform::ParseDate("2024-03-01");
    for (int p = 0; p < n; ++p) {
      const int i = n - 1 - p;
      view_->barDate[i] = firstDate + p;
      view_->barOpen[i] = oldestFirst[p].open;
      view_->barHigh[i] = oldestFirst[p].high;
      view_->barLow[i] = oldestFirst[p].low;
      view_->barClose[i] = oldestFirst[p].close;
      view_->barVolume[i] = oldestFirst[p].volume;
    }
    view_->barCount = n;
    view_->stockSymbol = "TEST";
    view_->stockFilePath = "TEST.txt";
    SetViewDays(*view_, n - 1);
    ComputeBoxes(*view_, false);
  }

  // The log of one backtest as the "m" key ("g" with signal) runs it.
  std::string Run(bool signal = false, bool rs = false) {
    tester_.Backtest(false, signal, true, true, rs);
    return log_.text();
  }

  std::unique_ptr<StockView> view_ = std::make_unique<StockView>();
  settings::Config config_ = [] {
    settings::Config c;
    c.useUnusualVolume = false;
    return c;
  }();
  platform::StringSink log_;
  platform::StringSink results_;
  BackTester tester_{*view_, config_, log_, results_};
};

constexpr const char* kHeader =
    "Buy Mode = BoxTops\r\nBacktesting - TEST\r\nTrying with Corvanes\r\n"
    "----------------------\r\nCorvane not found\r\nTrying with Unusual Volume\r\n"
    "--------------------------\r\nChecking for Pyramiding boxes\r\n"
    "Pyramiding boxes found on 3/2/2024 - 3/8/2024,8\r\n";

TEST_F(BacktestTest, ABreakoutBoughtAndStoppedOutAtTheStopLoss) {
  Load(TwoBoxes());
  ASSERT_EQ(view_->boxCount, 2);
  EXPECT_EQ(Run(), std::string(kHeader) +
                       "Buy signal set at - 14.125\r\n"
                       "Sell signal set at - 8.875\r\n"
                       "Bought 353 at 14.125 on 3/13/2024\r\n"
                       "Sold 353 at 8.875 on 3/16/2024\r\n"
                       "Profit/Loss = (1,853.25)$\r\n"
                       "Checking for Pyramiding boxes\r\n"
                       "Sufficient boxes not found. Not taking any action.\r\n");
  EXPECT_EQ(tester_.totalProfit, 353 * 8.875 - 353 * 14.125);
  EXPECT_EQ(tester_.tradeCount, 2);
  EXPECT_EQ(tester_.exitCount, 1);
  EXPECT_EQ(results_.text(), "");  // a single backtest writes no result row
}

TEST_F(BacktestTest, AGapDownSellsAtTheOpen) {
  auto days = TwoBoxes();
  days[15].open = 8.5;
  Load(days);
  const std::string log = Run();
  EXPECT_NE(log.find("Sold 353 at 8.5 on 3/16/2024\r\nProfit/Loss = (1,985.63)$\r\n"),
            std::string::npos)
      << log;
}

TEST_F(BacktestTest, NewBoxesRaiseTheStopLossAndASecondBuyUsesUpTheCapital) {
  Load(FourBoxes());
  ASSERT_EQ(view_->boxCount, 4);
  EXPECT_EQ(Run(), std::string(kHeader) +
                       "Buy signal set at - 14.125\r\n"
                       "Sell signal set at - 8.875\r\n"
                       "Bought 353 at 14.125 on 3/13/2024\r\n"
                       "New box found on 3/14/2024 - 16,12\r\n"
                       "Buy signal set at - 16.125\r\n"
                       "Sell signal set at - 11.875\r\n"
                       "Bought 310 at 16.125 on 3/19/2024\r\n"
                       "New box found on 3/20/2024 - 18,14.5\r\n"  // no capital: no new buy level
                       "Sell signal set at - 14.375\r\n"
                       "Sold 663 at 14.375 on 3/26/2024\r\n"
                       "Profit/Loss = (454.25)$\r\n"
                       "Checking for Pyramiding boxes\r\n"
                       "Sufficient boxes not found. Not taking any action.\r\n");
  // A new box with a lower bottom never lowers the stop loss.
  auto days = FourBoxes();
  days[20].low = 11.9;
  Load(days);
  log_.Clear();
  EXPECT_NE(Run().find("New box found on 3/20/2024 - 18,11.9\r\n"
                       "Holding shares worth 9,116.25$\r\nProfit/Loss = (868.63)$\r\n"),
            std::string::npos)
      << log_.text();
}

TEST_F(BacktestTest, APairWhoseNewerBottomIsTooLowIsPassedOver) {
  auto days = FourBoxes();
  days[8].low = 7.5;  // box B's bottom: more than the stop-loss distance below box A's
  Load(days);
  EXPECT_NE(Run().find("Pyramiding boxes found on 3/8/2024 - 3/14/2024,7.5\r\n"
                       "Buy signal set at - 16.125\r\n"
                       "Sell signal set at - 11.875\r\n"
                       "Bought 310 at 16.125 on 3/19/2024\r\n"
                       "New box found on 3/20/2024 - 18,14.5\r\n"
                       "Buy signal set at - 18.125\r\n"
                       "Sell signal set at - 14.375\r\n"
                       "Bought 275 at 18.125 on 3/25/2024\r\n"
                       "Sold 585 at 14.375 on 3/26/2024\r\n"
                       "Profit/Loss = (1,573.75)$\r\n"),
            std::string::npos)
      << log_.text();
}

TEST_F(BacktestTest, ACorvaneTradesTheFirstBoxAfterItsNewHigh) {
  Load(test::CorvaneBreakout());
  ASSERT_EQ(view_->corvaneCount, 1);
  EXPECT_EQ(view_->corvaneLowDay[0], 99 - 30);
  EXPECT_EQ(Run(),
            "Buy Mode = BoxTops\r\nBacktesting - TEST\r\nTrying with Corvanes\r\n"
            "----------------------\r\n"
            "First box found on 4/20/2024 - 13,11\r\n"
            "Buy signal set at - 13.125\r\n"
            "Sell signal set at - 10.875\r\n"
            "Bought 380 at 13.125 on 4/25/2024\r\n"
            "Holding shares worth 6,650.00$\r\n"
            "Profit/Loss = 1,662.50$\r\n");
  EXPECT_EQ(tester_.totalProfit, 1662.5);
  tester_.Backtest(true, false, true, true, false);
  EXPECT_EQ(results_.text(), "TEST\tCorvane\t\t1\t1,662.50$\t\tOpen\t\r\n");
  EXPECT_EQ(tester_.winCount, 1);
}

TEST_F(BacktestTest, AStopLossBelowZeroIsZeroAndTheHoldingIsValuedAtTheNewestClose) {
  Load(TwoBoxes());
  config_.stopLossLimit = 20;
  EXPECT_EQ(Run(), std::string(kHeader) +
                       "Buy signal set at - 14.125\r\n"
                       "Sell signal set at - 0\r\n"
                       "Bought 353 at 14.125 on 3/13/2024\r\n"
                       "Holding shares worth 3,194.65$\r\n"
                       "Profit/Loss = (1,791.48)$\r\n");
  EXPECT_EQ(tester_.sharesHeld, 353);
}

TEST_F(BacktestTest, BounceModeBuysTwiceAndHoldsToTheEnd) {
  Load(TwoBoxes());
  config_.buyMode = 2;
  const std::string expected =
      "Buy Mode = Bounce\r\nBacktesting - TEST\r\nTrying with Corvanes\r\n"
      "----------------------\r\nCorvane not found\r\nTrying with Unusual Volume\r\n"
      "--------------------------\r\nChecking for Pyramiding boxes\r\n"
      "Pyramiding boxes found on 3/2/2024 - 3/8/2024,8\r\n"
      "Sell signal set at - 8.875\r\n"
      "Found a bounce on 3/10/2024\r\n"
      "Bought 434 at 11.5 on 3/10/2024\r\n"
      "Found a bounce on 3/13/2024\r\n"
      "Bought 363 at 13.75 on 3/13/2024\r\n"
      "Holding shares worth 7,212.85$\r\n"
      "Profit/Loss = (2,769.40)$\r\n";
  EXPECT_EQ(Run(), expected);
}

TEST_F(BacktestTest, AnyOtherBuyModeTradesNothing) {
  Load(TwoBoxes());
  config_.buyMode = 3;
  const std::string log = Run();
  EXPECT_EQ(log.substr(0, 19), "Buy Mode = Bounce\r\n");
  EXPECT_NE(log.find("Pyramiding boxes found on 3/2/2024 - 3/8/2024,8\r\n"
                     "Sell signal set at - 8.875\r\n"
                     "Holding shares worth 0.00$\r\nProfit/Loss = 0.00$\r\n"),
            std::string::npos)
      << log;
  EXPECT_EQ(tester_.tradeCount, 0);
}

TEST_F(BacktestTest, SignalModeStopsAtTheBreakout) {
  Load(TwoBoxes());
  EXPECT_EQ(Run(true), std::string(kHeader) +
                           "Buy signal set at - 14.125\r\n"
                           "Found a buy position, turning on buy on 3/10/2024\r\n"
                           "Sell signal set at - 8.875\r\n"
                           "Price above stopbuy, turning off buy on 3/13/2024\r\n"
                           "Checking for Pyramiding boxes\r\n"
                           "Sufficient boxes not found. Not taking any action.\r\n");
  EXPECT_TRUE(tester_.buyArmed);  // the live report's buy signal
  EXPECT_EQ(platform::FormatShortDate(tester_.buyArmedDate), "3/10/2024");
  EXPECT_FALSE(tester_.stopLossHit);
  EXPECT_EQ(tester_.lastStopBuy, 14.125);
  EXPECT_EQ(tester_.lastStopLoss, 8.875);
}

TEST_F(BacktestTest, SignalModeStopsBelowTheStopLoss) {
  auto days = TwoBoxes();
  days[12] = {11, 13.5, 8, 11};  // falls through the bottom of box B instead
  Load(days);
  const std::string log = Run(true);
  EXPECT_NE(log.find("Sell signal set at - 8.875\r\n"
                     "Price below stoploss turning off buy on 3/13/2024\r\n"),
            std::string::npos)
      << log;
  EXPECT_TRUE(tester_.stopLossHit);
}

TEST_F(BacktestTest, SignalModeInBounceModeStopsAtTheFirstBounce) {
  Load(TwoBoxes());
  config_.buyMode = 2;
  EXPECT_NE(Run(true).find("Pyramiding boxes found on 3/2/2024 - 3/8/2024,8\r\n"
                           "Found a buy position, turning on buy on 3/10/2024\r\n"
                           "Sell signal set at - 8.875\r\n"
                           "Price above stopbuy, turning off buy on 3/10/2024\r\n"
                           "Checking for Pyramiding boxes\r\n"
                           "Sufficient boxes not found. Not taking any action.\r\n"),
            std::string::npos)
      << log_.text();
  EXPECT_FALSE(tester_.buyArmed);
  EXPECT_EQ(tester_.tradeCount, 0);
}

TEST_F(BacktestTest, AFailedRSCheckSkipsTheBuy) {
  Load(TwoBoxes());
  view_->rsAvailable = true;  // a flat RS line never rose: every check fails
  EXPECT_NE(Run(false, true)
                .find("Sell signal set at - 8.875\r\n"
                      "Skipped buy signal on 3/13/2024 because RS condition not met\r\n"
                      "Skipped buy signal on 3/15/2024 because RS condition not met\r\n"
                      "Holding shares worth 0.00$\r\nProfit/Loss = 0.00$\r\n"),
            std::string::npos)
      << log_.text();
  log_.Clear();
  // In signal mode the skips go on until the price falls below the stop loss.
  EXPECT_NE(Run(true, true)
                .find("Skipped buy signal on 3/15/2024 because RS condition not met\r\n"
                      "Price below stoploss turning off buy on 3/16/2024\r\n"),
            std::string::npos)
      << log_.text();
  EXPECT_FALSE(tester_.buyArmed);  // the RS check failed on the first day too
}

TEST_F(BacktestTest, AListRunWritesAResultRowAndKeepsTheTotals) {
  Load(TwoBoxes());
  EXPECT_EQ(tester_.Backtest(true, false, true, true, false), 3);
  EXPECT_EQ(log_.text().substr(0, 20), "Backtesting - TEST\r\n");  // no "Buy Mode" header
  EXPECT_EQ(results_.text(), "TEST\tPyramiding Boxes\t2\t(1,853.25)$\t\tCompleted\t\r\n");
  config_.stopLossLimit = 20;
  tester_.Backtest(true, false, true, true, false);
  EXPECT_EQ(results_.text().substr(results_.text().find("\r\n") + 2),
            "TEST\tPyramiding Boxes\t1\t(1,791.48)$\t\tOpen\t\r\n");
  EXPECT_EQ(tester_.lossCount, 2);
  EXPECT_EQ(tester_.winCount, 0);
  EXPECT_EQ(tester_.allTrades, 3);
  EXPECT_DOUBLE_EQ(tester_.lossTotal, -1853.25 + 353 * 9.05 - 353 * 14.125);
}

TEST_F(BacktestTest, UnusualVolumeIsThreeLoudDaysOfRisingPrices) {
  std::vector<Day> days(20, Day{10, 10.5, 9.5, 10, 100});
  for (int p : {12, 13, 14}) days[p] = {12, 12.5, 11.5, 12, 200};  // days 7, 6 and 5
  Load(days);
  view_->averageVolume = 100;
  config_.unusualVolumePercentage = 0;  // unset: the search falls back to 25 %
  EXPECT_EQ(tester_.FindUnusualVolume(19), 8);
  EXPECT_EQ(config_.unusualVolumePercentage, 0.25);
  EXPECT_TRUE(tester_.unusualVolumeFound);
  EXPECT_EQ(tester_.FindUnusualVolume(8), 0);  // the search starts on the day before
  // Loud days with a falling price are not unusual volume.
  for (int p : {12, 13, 14}) days[p].close = 9;
  Load(days);
  view_->averageVolume = 100;
  EXPECT_EQ(tester_.FindUnusualVolume(19), 0);
  // Nor are days below the 25 % threshold.
  for (int p : {12, 13, 14}) days[p] = {12, 12.5, 11.5, 12, 125};
  Load(days);
  view_->averageVolume = 100;
  EXPECT_EQ(tester_.FindUnusualVolume(19), 0);
}

TEST_F(BacktestTest, WithoutUnusualVolumeTheBoxesAreNotTried) {
  Load(TwoBoxes());
  config_.useUnusualVolume = true;
  view_->averageVolume = 1e9;
  EXPECT_EQ(Run(),
            "Buy Mode = BoxTops\r\nBacktesting - TEST\r\nTrying with Corvanes\r\n"
            "----------------------\r\nCorvane not found\r\nTrying with Unusual Volume\r\n"
            "--------------------------\r\nChecking for Unusual Volume\r\n"
            "Unusual Volume Not Found\r\n");
}

}  // namespace
}  // namespace halvard::engine
