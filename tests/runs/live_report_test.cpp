#include "halvard/runs/live_report.h"

#include "halvard/platform/date_text.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

class LiveReportTest : public RunsTest {
 protected:
  platform::NoProgress quiet;
  LiveReport report{s, quiet, *platform::ParseDate("11/23/2026")};
  const RunSwitches corvaneAndBoxes{true, true, false};
};

TEST_F(LiveReportTest, ASweepOverTwoStopLossesMatchesTheHandWrittenReport) {
  Prices("TWO", test::TwoBoxes());
  Prices("FLAT", std::vector<test::Day>(kBars, test::Day{9.5, 10, 9, 9.5}));
  List({"TWO", "GONE", "FLAT"});
  ParseStopLossLevels("0.125,0.25,0.125", report.levels);
  report.Run(corvaneAndBoxes);
  EXPECT_EQ(report.text(), CrLf(test::ReadText(test::TestData() / "runs/live_three.txt")));
  EXPECT_EQ(report.buyList(), "TWO\r\n");
  EXPECT_EQ(s.config.stopLossLimit, 0.25);  // the last level stays the setting
}

TEST_F(LiveReportTest, MissingFilesGiveErrorRowsAndAnEmptyListOnlyTheHeader) {
  List({"GONE", "LOST"});
  report.RunLive(corvaneAndBoxes);
  const std::string& text = report.text();
  const std::string rows = "GONE\tError opening stock file \r\nLOST\tError opening stock file \r\n";
  EXPECT_EQ(text.substr(text.size() - rows.size()), rows);
  EXPECT_EQ(report.buyList(), "");

  LiveReport empty(s, quiet, 0);
  List({});
  ParseStopLossLevels("1,2,1", empty.levels);
  empty.Run(corvaneAndBoxes);
  EXPECT_EQ(std::count(empty.text().begin(), empty.text().end(), '\n'), 3);
  EXPECT_EQ(s.config.stopLossLimit, 2);  // no pass ran, and still the last level stays
}

}  // namespace
}  // namespace halvard::runs
