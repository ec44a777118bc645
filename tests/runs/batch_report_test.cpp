#include "halvard/runs/batch_report.h"

#include "halvard/error.h"

#include "runs_fixture.h"

namespace halvard::runs {
namespace {

class BatchReportTest : public RunsTest {
 protected:
  // CORV makes 1,662.50 on a corvane; FOUR loses 454.25 with a stop loss of 0.125 below the
  // box bottoms and 537.125 with 0.25.
  void ThreeSymbols() {
    Prices("CORV", test::CorvaneBreakout());
    Prices("FOUR", test::FourBoxes());
    List({"CORV", "GONE", "FOUR"});
    ParseStopLossLevels("0.125,0.25,0.125", batch.levels);
    ParseRsLevels("10,12,2", batch.levels);
  }

  platform::NoProgress quiet;
  BatchReport batch{s, quiet};
  const RunSwitches corvaneAndBoxes{true, true, false};
};

TEST_F(BatchReportTest, TheNestedSweepMatchesTheHandWrittenReportAndATieKeepsTheFirst) {
  ThreeSymbols();
  batch.GoCommand(corvaneAndBoxes);
  EXPECT_EQ(batch.text(), CrLf(test::ReadText(test::TestData() / "runs/batch_three.txt")));
  // Every batch adds the symbols it traded.
  EXPECT_EQ(batch.tradedList(), "CORV\r\nFOUR\r\nCORV\r\nFOUR\r\nCORV\r\nFOUR\r\nCORV\r\nFOUR\r\n");
}

TEST_F(BatchReportTest, TheResultHoldsEveryStepsRowsAndSummaryAndTheBestCombination) {
  ThreeSymbols();
  batch.GoCommand(corvaneAndBoxes);
  const BatchResult& r = batch.result();
  EXPECT_EQ(r.list, "three");
  ASSERT_EQ(r.sweeps.size(), 1u);
  const BatchSweep& sweep = r.sweeps[0];
  EXPECT_EQ(sweep.varies, "both");
  ASSERT_EQ(sweep.steps.size(), 4u);
  // Stop loss outer, RS days inner, as the steps of the text run.
  EXPECT_EQ(sweep.steps[1].stopLoss, 0.125);
  EXPECT_EQ(sweep.steps[1].rsDays, 12);
  EXPECT_EQ(sweep.steps[2].stopLoss, 0.25);
  EXPECT_EQ(sweep.steps[2].rsDays, 10);
  const BatchStep& first = sweep.steps[0];
  ASSERT_EQ(first.rows.size(), 3u);
  EXPECT_EQ(first.rows[0].symbol, "CORV");
  EXPECT_EQ(first.rows[0].catalyst, "Corvane");
  EXPECT_EQ(first.rows[0].trades, 1);
  EXPECT_EQ(first.rows[0].profit, 1662.5);
  EXPECT_EQ(first.rows[0].status, "Open");
  EXPECT_EQ(first.rows[1].symbol, "GONE");
  EXPECT_FALSE(first.rows[1].trades.has_value());
  EXPECT_EQ(first.rows[1].status, "Error opening stock file");
  EXPECT_EQ(first.rows[2].profit, -454.25);
  EXPECT_EQ(first.rows[2].status, "Completed");
  EXPECT_EQ(first.profitMakingStocks, 1);
  EXPECT_EQ(first.lossMakingStocks, 1);
  EXPECT_EQ(first.totalTrades, 4);
  EXPECT_EQ(first.totalProfit, 1208.25);
  EXPECT_TRUE(first.finished);
  EXPECT_EQ(sweep.steps[3].rows[2].profit, -537.125);
  // A tie keeps the first combination.
  EXPECT_TRUE(sweep.finished);
  EXPECT_EQ(sweep.maximumProfit, 1208.25);
  EXPECT_EQ(sweep.bestStopLoss, 0.125);
  EXPECT_EQ(sweep.bestRsDays, 10);
}

TEST_F(BatchReportTest, TheSeparateSweepsRunTheRsDaysWithTheLastStopLoss) {
  ThreeSymbols();
  batch.RunBatch(corvaneAndBoxes);
  const std::string& text = batch.text();
  EXPECT_EQ(text.substr(0, text.find("Step 1 of 2")),
            "Batch Testing three for stoploss settings starting from 0.125 to 0.25 with a step "
            "of 0.125\r\nBuy Mode = BoxTops\r\n");
  EXPECT_NE(text.find("Maximum profit = 1208.25 with a stoploss setting 0.125$ below box bottom."
                      "\r\nBatch Testing three for RS settings starting from 10 to 12 with a step "
                      "of 2\r\nBuy Mode = BoxTops\r\nStep 1 of 2\r\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.substr(text.rfind("Maximum")),
            "Maximum profit = 1125.375 with 10 days RS setting.\r\n");
  const auto& sweeps = batch.result().sweeps;
  ASSERT_EQ(sweeps.size(), 2u);
  EXPECT_EQ(sweeps[0].varies, "stopLoss");
  EXPECT_EQ(sweeps[0].bestStopLoss, 0.125);
  EXPECT_FALSE(sweeps[0].bestRsDays.has_value());
  EXPECT_EQ(sweeps[1].varies, "rsDays");
  EXPECT_EQ(sweeps[1].maximumProfit, 1125.375);
  EXPECT_EQ(sweeps[1].bestRsDays, 10);
  EXPECT_EQ(sweeps[1].steps[0].stopLoss, 0.25);  // the last stop loss of the first sweep
}

TEST_F(BatchReportTest, ABatchOfMissingFilesReportsNothingMadeAndAMaximumOfZero) {
  List({"GONE"});
  batch.GoCommand(corvaneAndBoxes);
  const std::string& text = batch.text();
  for (const char* line : {"GONE\tError opening stock file \r\n", "Profit Making Stocks = 0\r\n",
                           "Total Trades = 0\r\n", "Total Profit/Loss = 0.00\r\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
  EXPECT_EQ(text.substr(text.find("Maximum")),
            "Maximum profit = 0 with a stoploss setting 0$ below box bottom and RS comparison at "
            "0 days.\r\n");
  EXPECT_EQ(batch.tradedList(), "");
}

// Cancels once `after` stocks have started.
class CancelOnStock : public platform::Progress {
 public:
  explicit CancelOnStock(int after) : after_(after) {}
  void Step(int, int, std::string_view) override { ++steps_; }
  bool Cancelled() const override { return steps_ >= after_; }

 private:
  int after_;
  int steps_ = 0;
};

TEST_F(BatchReportTest, ASweepLeavesTheLevelsOfTheLastStepItReached) {
  ThreeSymbols();
  batch.GoCommand(corvaneAndBoxes);
  EXPECT_EQ(s.config.stopLossLimit, 0.25);
  EXPECT_EQ(s.config.rsDayCurr, 12);
  // Cancelled in its second step (0.125, 12 days), at its end, and in its third (0.25, 10).
  const struct {
    int after;
    double stopLoss;
    int rsDays;
  } cancels[] = {{5, 0.125, 12}, {6, 0.125, 12}, {7, 0.25, 10}};
  for (const auto& c : cancels) {
    s.config.stopLossLimit = 1;
    s.config.rsDayCurr = 3;
    CancelOnStock cancel(c.after);
    BatchReport cancelled(s, cancel);
    cancelled.levels = batch.levels;
    cancelled.GoCommand(corvaneAndBoxes);
    EXPECT_EQ(s.config.stopLossLimit, c.stopLoss) << c.after;
    EXPECT_EQ(s.config.rsDayCurr, c.rsDays) << c.after;
    EXPECT_EQ(cancelled.text().find("Maximum"), std::string::npos);
  }
  // The separate sweeps: cancelled in the stop losses, the RS days are not reached.
  s.config.rsDayCurr = 3;
  CancelOnStock cancel(4);
  BatchReport separate(s, cancel);
  separate.levels = batch.levels;
  separate.RunBatch(corvaneAndBoxes);
  EXPECT_EQ(s.config.stopLossLimit, 0.25);
  EXPECT_EQ(s.config.rsDayCurr, 3);
}

TEST_F(BatchReportTest, ARefusedFileLeavesTheLevelsOfTheStepItStopped) {
  ThreeSymbols();
  test::WriteText(dir / "BAD.txt", "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,x,1,100\r\n");
  List({"CORV", "BAD"});
  EXPECT_THROW(batch.GoCommand(corvaneAndBoxes), Error);
  EXPECT_EQ(s.config.stopLossLimit, 0.125);
  EXPECT_EQ(s.config.rsDayCurr, 10);
}

TEST_F(BatchReportTest, AnUnusualVolumeSearchAtAPercentageOfZeroLeavesTheDefaultInTheSettings) {
  Prices("CORV", test::CorvaneBreakout());
  Prices("FOUR", test::FourBoxes());
  s.config.useUnusualVolume = true;
  s.config.unusualVolumePercentage = 0;
  List({"CORV"});  // traded on its corvane: nothing searched
  batch.GoCommand(corvaneAndBoxes);
  EXPECT_EQ(s.config.unusualVolumePercentage, 0);
  List({"CORV", "FOUR"});
  batch.GoCommand(corvaneAndBoxes);
  EXPECT_EQ(s.config.unusualVolumePercentage, 0.25);
}

TEST_F(BatchReportTest, ARunThatKeepsNoLogReportsTheSameAndLeavesTheLogEmpty) {
  ThreeSymbols();
  batch.GoCommand(corvaneAndBoxes);
  EXPECT_NE(s.log().text().find("Bought"), std::string::npos);
  s.log().Clear();
  s.tester().KeepLog(false);
  BatchReport unlogged(s, quiet);
  unlogged.levels = batch.levels;
  unlogged.GoCommand(corvaneAndBoxes);
  EXPECT_EQ(unlogged.text(), batch.text());
  EXPECT_EQ(unlogged.tradedList(), batch.tradedList());
  EXPECT_EQ(s.log().text(), "");
}

}  // namespace
}  // namespace halvard::runs
