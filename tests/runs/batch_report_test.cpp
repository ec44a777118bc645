#include "halvard/runs/batch_report.h"

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

}  // namespace
}  // namespace halvard::runs
