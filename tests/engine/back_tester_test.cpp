#include "halvard/engine/back_tester.h"

#include <gtest/gtest.h>

#include <memory>

#include "halvard/data/file_parser.h"
#include "halvard/platform/date_text.h"
#include "series.h"
#include "test_support.h"

namespace halvard::engine {
namespace {

using test::Day;
using test::FourBoxes;
using test::TwoBoxes;

// A batch run's backtest of one stock: corvanes, then boxes, no RS check.
constexpr BacktestOptions kListRun{.partOfListRun = true, .tryCorvanes = true, .tryBoxes = true};

class BacktestTest : public ::testing::Test {
 protected:
  BacktestTest() { trading_.useUnusualVolume = false; }

  // The series as its price file loads, every day in view.
  void Load(const std::vector<Day>& oldestFirst) {
    test::WritePrices(dir_ / "TEST.txt", oldestFirst);
    ASSERT_TRUE(data::LoadStockFile(*view_, (dir_ / "TEST.txt").string()));
    SetViewDays(*view_, static_cast<int>(oldestFirst.size()) - 1);
    ComputeBoxes(*view_, false);
  }

  // The log of one backtest as the "m" key ("g" with signal) runs it.
  std::string Run(bool signal = false, bool rs = false) {
    log_.Clear();
    tester_.Backtest(
        trading_, {.signalMode = signal, .tryCorvanes = true, .tryBoxes = true, .rsEnabled = rs});
    return log_.text();
  }

  // For logs checked in part: the piece must appear as it stands.
  void ExpectInLog(std::string_view piece) {
    EXPECT_NE(log_.text().find(piece), std::string::npos) << piece << "\nnot in\n" << log_.text();
  }

  test::TempDir dir_;
  std::unique_ptr<StockView> view_ = std::make_unique<StockView>();
  TradingSettings trading_;
  platform::StringSink log_;
  platform::StringSink results_;
  BackTester tester_{*view_, log_, results_};
};

// No corvane, so the boxes are tried, from the pair A-B of the hand-made series.
std::string Header(const char* mode = "BoxTops") {
  return std::string("Buy Mode = ") + mode +
         "\r\nBacktesting - TEST\r\nTrying with Corvanes\r\n"
         "----------------------\r\nCorvane not found\r\nTrying with Unusual Volume\r\n"
         "--------------------------\r\nChecking for Pyramiding boxes\r\n"
         "Pyramiding boxes found on 3/2/2024 - 3/8/2024,8\r\n";
}
constexpr const char* kNoMorePairs =
    "Checking for Pyramiding boxes\r\nSufficient boxes not found. Not taking any action.\r\n";

TEST_F(BacktestTest, ABreakoutBoughtAndStoppedOutAtTheStopLoss) {
  Load(TwoBoxes());
  ASSERT_EQ(view_->boxCount, 2);
  EXPECT_EQ(Run(), Header() +
                       "Buy signal set at - 14.125\r\n"
                       "Sell signal set at - 8.875\r\n"
                       "Bought 353 at 14.125 on 3/13/2024\r\n"
                       "Sold 353 at 8.875 on 3/16/2024\r\n"
                       "Profit/Loss = (1,853.25)$\r\n" +
                       kNoMorePairs);
  EXPECT_EQ(tester_.totalProfit, 353 * 8.875 - 353 * 14.125);
  EXPECT_EQ(tester_.tradeCount, 2);
  EXPECT_EQ(tester_.exitCount, 1);
  EXPECT_EQ(results_.text(), "");  // a single backtest writes no result row
  // A gap down sells at the open instead.
  auto days = TwoBoxes();
  days[15].open = 8.5;
  Load(days);
  Run();
  ExpectInLog("Sold 353 at 8.5 on 3/16/2024\r\nProfit/Loss = (1,985.63)$\r\n");
}

TEST_F(BacktestTest, NewBoxesRaiseTheStopLossAndASecondBuyUsesUpTheCapital) {
  Load(FourBoxes());
  ASSERT_EQ(view_->boxCount, 4);
  EXPECT_EQ(Run(), Header() +
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
                       "Profit/Loss = (454.25)$\r\n" +
                       kNoMorePairs);
  // The buys and the sale, as values beside the log.
  ASSERT_EQ(tester_.fills.size(), 3u);
  EXPECT_EQ(platform::FormatShortDate(tester_.fills[1].date), "3/19/2024");
  EXPECT_TRUE(tester_.fills[1].bought);
  EXPECT_EQ(tester_.fills[1].shares, 310);
  EXPECT_EQ(tester_.fills[1].price, 16.125);
  EXPECT_FALSE(tester_.fills[2].bought);
  EXPECT_EQ(tester_.fills[2].shares, 663);
  EXPECT_EQ(tester_.fills[2].price, 14.375);
  // A new box with a lower bottom never lowers the stop loss.
  auto days = FourBoxes();
  days[20].low = 11.9;
  Load(days);
  Run();
  ExpectInLog(
      "New box found on 3/20/2024 - 18,11.9\r\n"
      "Holding shares worth 9,116.25$\r\nProfit/Loss = (868.63)$\r\n");
}

TEST_F(BacktestTest, APairWhoseNewerBottomIsTooLowIsPassedOver) {
  auto days = FourBoxes();
  days[8].low = 7.5;  // box B's bottom: more than the stop-loss distance below box A's
  Load(days);
  Run();
  ExpectInLog(
      "Pyramiding boxes found on 3/8/2024 - 3/14/2024,7.5\r\n"
      "Buy signal set at - 16.125\r\n"
      "Sell signal set at - 11.875\r\n"
      "Bought 310 at 16.125 on 3/19/2024\r\n"
      "New box found on 3/20/2024 - 18,14.5\r\n"
      "Buy signal set at - 18.125\r\n"
      "Sell signal set at - 14.375\r\n"
      "Bought 275 at 18.125 on 3/25/2024\r\n"
      "Sold 585 at 14.375 on 3/26/2024\r\n"
      "Profit/Loss = (1,573.75)$\r\n");
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
  tester_.Backtest(trading_, kListRun);
  EXPECT_EQ(results_.text(), "TEST\tCorvane\t\t1\t1,662.50$\t\tOpen\t\r\n");
  EXPECT_EQ(tester_.winCount, 1);
}

TEST_F(BacktestTest, AStopLossBelowZeroIsZeroAndTheHoldingIsValuedAtTheNewestClose) {
  Load(TwoBoxes());
  trading_.stopLossLimit = 20;
  EXPECT_EQ(Run(), Header() +
                       "Buy signal set at - 14.125\r\n"
                       "Sell signal set at - 0\r\n"
                       "Bought 353 at 14.125 on 3/13/2024\r\n"
                       "Holding shares worth 3,194.65$\r\n"
                       "Profit/Loss = (1,791.48)$\r\n");
  EXPECT_EQ(tester_.sharesHeld, 353);
}

TEST_F(BacktestTest, BounceModeBuysTwiceAndHoldsToTheEndAnyOtherModeTradesNothing) {
  Load(TwoBoxes());
  trading_.buyMode = 2;
  EXPECT_EQ(Run(), Header("Bounce") +
                       "Sell signal set at - 8.875\r\n"
                       "Found a bounce on 3/10/2024\r\n"
                       "Bought 434 at 11.5 on 3/10/2024\r\n"
                       "Found a bounce on 3/13/2024\r\n"
                       "Bought 363 at 13.75 on 3/13/2024\r\n"
                       "Holding shares worth 7,212.85$\r\n"
                       "Profit/Loss = (2,769.40)$\r\n");
  trading_.buyMode = 3;
  EXPECT_EQ(Run(), Header("Bounce") +
                       "Sell signal set at - 8.875\r\n"
                       "Holding shares worth 0.00$\r\nProfit/Loss = 0.00$\r\n");
  EXPECT_EQ(tester_.tradeCount, 0);
}

// Buys at a few millionths of a dollar take billions of shares; a buy at 0 can take none.
TEST_F(BacktestTest, BounceBuysAtTinyClosesCountEveryShareAndAtZeroStop) {
  auto days = TwoBoxes();
  days[9].close = 0.000001;
  days[12].close = 0.000002;
  Load(days);
  trading_.buyMode = 2;
  Run();
  ExpectInLog("Bought 5000000000 at 1E-06 on 3/10/2024\r\n");
  ExpectInLog("Bought 2500000000 at 2E-06 on 3/13/2024\r\n");
  EXPECT_EQ(tester_.sharesHeld, 7500000000);

  days[9].close = 0;
  Load(days);
  EXPECT_NE(test::ErrorText([&] {
              Run();
            }).find("TEST.txt: a buy at a price of 0 on 3/10/2024 gives no share count"),
            std::string::npos);
  days[9].close = 1e-300;
  Load(days);
  EXPECT_NE(test::ErrorText([&] { Run(); }).find("a buy at a price of 1E-300 on 3/10/2024"),
            std::string::npos);
}

TEST_F(BacktestTest, SignalModeStopsAtTheBreakoutOrBelowTheStopLoss) {
  Load(TwoBoxes());
  EXPECT_EQ(Run(true), Header() +
                           "Buy signal set at - 14.125\r\n"
                           "Found a buy position, turning on buy on 3/10/2024\r\n"
                           "Sell signal set at - 8.875\r\n"
                           "Price above stopbuy, turning off buy on 3/13/2024\r\n" +
                           kNoMorePairs);
  EXPECT_TRUE(tester_.buyArmed);  // the live report's buy signal
  EXPECT_EQ(platform::FormatShortDate(tester_.buyArmedDate), "3/10/2024");
  EXPECT_FALSE(tester_.stopLossHit);
  EXPECT_EQ(tester_.lastStopBuy, 14.125);
  EXPECT_EQ(tester_.lastStopLoss, 8.875);

  auto days = TwoBoxes();
  days[12] = {11, 13.5, 8, 11};  // falls through the bottom of box B instead
  Load(days);
  Run(true);
  ExpectInLog(
      "Sell signal set at - 8.875\r\nPrice below stoploss turning off buy on 3/13/2024\r\n");
  EXPECT_TRUE(tester_.stopLossHit);
}

TEST_F(BacktestTest, SignalModeInBounceModeStopsAtTheFirstBounce) {
  Load(TwoBoxes());
  trading_.buyMode = 2;
  EXPECT_EQ(Run(true), Header("Bounce") +
                           "Found a buy position, turning on buy on 3/10/2024\r\n"
                           "Sell signal set at - 8.875\r\n"
                           "Price above stopbuy, turning off buy on 3/10/2024\r\n" +
                           kNoMorePairs);
  EXPECT_FALSE(tester_.buyArmed);
  EXPECT_EQ(tester_.tradeCount, 0);
}

TEST_F(BacktestTest, AFailedRSCheckSkipsTheBuy) {
  Load(TwoBoxes());
  view_->rsAvailable = true;  // a flat RS line never rose: every check fails
  Run(false, true);
  ExpectInLog(
      "Sell signal set at - 8.875\r\n"
      "Skipped buy signal on 3/13/2024 because RS condition not met\r\n"
      "Skipped buy signal on 3/15/2024 because RS condition not met\r\n"
      "Holding shares worth 0.00$\r\nProfit/Loss = 0.00$\r\n");
  // In signal mode the skips go on until the price falls below the stop loss.
  Run(true, true);
  ExpectInLog(
      "Skipped buy signal on 3/15/2024 because RS condition not met\r\n"
      "Price below stoploss turning off buy on 3/16/2024\r\n");
  EXPECT_FALSE(tester_.buyArmed);  // the RS check failed on the first day too
}

TEST_F(BacktestTest, AListRunWritesAResultRowAndKeepsTheTotals) {
  Load(TwoBoxes());
  EXPECT_EQ(tester_.Backtest(trading_, kListRun), 3);
  EXPECT_EQ(log_.text().substr(0, 20), "Backtesting - TEST\r\n");  // no "Buy Mode" header
  EXPECT_EQ(results_.text(), "TEST\tPyramiding Boxes\t2\t(1,853.25)$\t\tCompleted\t\r\n");
  trading_.stopLossLimit = 20;
  tester_.Backtest(trading_, kListRun);
  EXPECT_EQ(results_.text().substr(results_.text().find("\r\n") + 2),
            "TEST\tPyramiding Boxes\t1\t(1,791.48)$\t\tOpen\t\r\n");
  EXPECT_EQ(tester_.lossCount, 2);
  EXPECT_EQ(tester_.winCount, 0);
  EXPECT_EQ(tester_.allTrades, 3);
  EXPECT_DOUBLE_EQ(tester_.lossTotal, -1853.25 + 353 * 9.05 - 353 * 14.125);
}

TEST_F(BacktestTest, UnusualVolumeIsThreeLoudDaysOfRisingPrices) {
  const struct {
    double close;
    int64_t volume;
    int found;
  } cases[] = {{12, 200, 8}, {9, 200, 0}, {12, 125, 0}};  // falling, or below the 25 % threshold
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.close << " " << c.volume);
    std::vector<Day> days(20, Day{10, 10.5, 9.5, 10, 100});
    for (int p : {12, 13, 14}) days[p] = {12, 12.5, 11.5, c.close, c.volume};  // days 7, 6, 5
    Load(days);
    view_->averageVolume = 100;
    settings::Config config;
    config.unusualVolumePercentage = 0;  // unset: the search falls back to 25 %
    const double percentage = TradingSettingsOf(config).unusualVolumePercentage;
    EXPECT_EQ(tester_.FindUnusualVolume(19, percentage), c.found);
    EXPECT_EQ(tester_.FindUnusualVolume(8, percentage), 0);  // the search starts on the day before
  }
  EXPECT_TRUE(tester_.unusualVolumeFound);  // set by the first case, never cleared
}

TEST_F(BacktestTest, ARememberedSearchAnswersAsTheSearchAndStillMarksItFound) {
  std::vector<Day> days(20, Day{10, 10.5, 9.5, 10, 100});
  for (int p : {12, 13, 14}) days[p] = {12, 12.5, 11.5, 12, 200};
  Load(days);
  view_->averageVolume = 100;
  tester_.RememberSearches(true);
  for (int round = 0; round < 2; ++round) {
    tester_.unusualVolumeFound = false;
    EXPECT_EQ(tester_.FindUnusualVolume(19, 0.25), 8);
    EXPECT_TRUE(tester_.unusualVolumeFound);
    EXPECT_EQ(tester_.FindUnusualVolume(19, 1.5), 0);  // another percentage is searched anew
  }
  tester_.RememberSearches(false);
  view_->barVolume[7] = 100;  // the view changed: searched again
  EXPECT_EQ(tester_.FindUnusualVolume(19, 0.25), 0);
}

TEST_F(BacktestTest, WithoutUnusualVolumeTheBoxesAreNotTried) {
  Load(TwoBoxes());
  trading_.useUnusualVolume = true;
  view_->averageVolume = 1e9;
  const std::string header = Header();
  EXPECT_EQ(Run(), header.substr(0, header.find("Checking")) +
                       "Checking for Unusual Volume\r\nUnusual Volume Not Found\r\n");
}

}  // namespace
}  // namespace halvard::engine
