#include "halvard/runs/scans.h"

#include "halvard/runs/scan_commands.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

using test::Day;

// Remembers the progress texts; cancels once it has seen `cancelAfter` stocks.
class RecordingProgress : public platform::Progress {
 public:
  explicit RecordingProgress(int cancelAfter = 1 << 30) : cancelAfter_(cancelAfter) {}
  void Step(int, int, std::string_view text) override { texts.emplace_back(text); }
  bool Cancelled() const override { return static_cast<int>(texts.size()) >= cancelAfter_; }
  std::vector<std::string> texts;

 private:
  int cancelAfter_;
};

class ScansTest : public RunsTest {
 protected:
  platform::NoProgress quiet;
};

// Highs rising to the newest day, except for `peak` days back (day numbers count back from the
// newest day) where the high is `peakHigh`.
std::vector<Day> Rising(int days, std::initializer_list<int> peaks, double peakHigh) {
  std::vector<Day> series;
  for (int p = 0; p < days; ++p) {
    const double high = 10 + 0.01 * p;
    series.push_back({high - 0.5, high, high - 1, high - 0.5});
  }
  for (const int day : peaks) series[days - 1 - day].high = peakHigh;
  return series;
}

TEST_F(ScansTest, HighScansJudgeTheNewestOfEqualHighsAndKeepTheXWeekWindowAt115Days) {
  Prices("RISE", Rising(270, {}, 0), 0);
  Prices("PEAK", Rising(270, {10}, 50), 0);
  Prices("TIE", Rising(270, {3, 30}, 50), 0);
  List({"PEAK", "RISE", "TIE", "GONE"});
  HighScan(s, quiet, 4, 5);
  EXPECT_EQ(s.resultText, "RISE\r\nTIE\r\n");
  // The 52-week scan with no days of grace: only a high made on the newest day counts.
  s.config.period52week = 0;
  const ScanCommand& fiftyTwo = *FindScanCommand("52week");
  fiftyTwo.run(s, quiet);
  EXPECT_EQ(s.resultText, "RISE\r\n");
  EXPECT_EQ(fiftyTwo.listName(s.config), "52WeekHigh");
  // Ten weeks is 50 days, always within the 115 days of the X-week scan.
  s.config.periodXQuantity = 10;
  const ScanCommand& xWeek = *FindScanCommand("xweek");
  xWeek.run(s, quiet);
  EXPECT_EQ(s.resultText, "PEAK\r\nRISE\r\nTIE\r\n");
  EXPECT_EQ(xWeek.listName(s.config), "10WeekHigh");
  EXPECT_THROW(HighScan(s, quiet, 201, 5), Error);  // 1005 days: more than a file can hold
}

TEST_F(ScansTest, OnlyAStockWithExactlyOneRecentCorvaneIsListed) {
  // Two bases of more than 42 days, each ended by a new high: two corvanes.
  std::vector<Day> twoBases(kBars, Day{9.5, 10, 9, 9.5});
  for (int p = 45; p < kBars; ++p)
    twoBases[p] = p < 92 ? Day{11.5, 12, 11, 11.5} : Day{13.5, 14, 13, 13.5};
  Prices("TWOBASES", twoBases);
  Prices("CORV", test::CorvaneBreakout());  // one corvane, broken out 49 days ago
  List({"TWOBASES", "GONE", "CORV"});
  ASSERT_EQ(s.view().corvaneCount, 2);
  CorvaneScan(s, quiet, 1000);
  EXPECT_EQ(s.resultText, "CORV\r\n");
  CorvaneScan(s, quiet, 50);
  EXPECT_EQ(s.resultText, "CORV\r\n");
  CorvaneScan(s, quiet, 49);
  EXPECT_EQ(s.resultText, "");
}

TEST_F(ScansTest, InABoxListsOnlyAStockWhoseNewestBoxIsStillOpen) {
  auto open = test::TwoBoxes();
  open.resize(12);  // box B not broken yet
  Prices("OPEN", open);
  Prices("TWO", test::TwoBoxes());
  Prices("FLAT", std::vector<Day>(kBars, Day{9.5, 10, 9, 9.5}));
  List({"TWO", "OPEN", "FLAT", "GONE"});
  InABoxScan(s, quiet);
  EXPECT_EQ(s.resultText, "OPEN\r\n");
}

TEST_F(ScansTest, UnusualVolumeCanListOnlyTheFirstStockThatLoads) {
  std::vector<Day> quiet(kBars, Day{10, 10.5, 9.5, 10, 100});
  std::vector<Day> loud = quiet;
  for (const int day : {5, 6, 7}) loud[kBars - 1 - day] = {12, 12.5, 11.5, 12, 1000};
  Prices("QUIET", quiet);
  Prices("LOUD", loud);
  // A first stock without unusual volume uses the position up for the rest of the list.
  List({"QUIET", "LOUD"});
  UnusualVolumeScan(s, this->quiet, 12);
  EXPECT_EQ(s.resultText, "");
  List({"GONE", "LOUD", "LOUD"});
  UnusualVolumeScan(s, this->quiet, 12);
  EXPECT_EQ(s.resultText, "LOUD\r\n");  // the second LOUD finds the position used up
  // The engine's found flag is never cleared, so from now on a quiet first stock is listed.
  List({"QUIET", "LOUD"});
  UnusualVolumeScan(s, this->quiet, 12);
  EXPECT_EQ(s.resultText, "QUIET\r\n");
}

// The engine scans pass the unusual-volume setting as the switch that tries the boxes: loud
// days (10 times the volume, days 13 to 11) before box A breaks out let the search reach it.
std::vector<Day> Loud(std::vector<Day> days) {
  for (const int p : {3, 4, 5}) days[p].volume = 10000;
  return days;
}

TEST_F(ScansTest, TheEngineScansReadTheBuyAndStopLossFlagsOfTheSamePass) {
  s.config.useUnusualVolume = true;
  auto drop = Loud(test::TwoBoxes());
  drop[12] = {11, 13.5, 8, 11};  // falls through box B's stop loss instead of breaking out
  Prices("TWO", Loud(test::TwoBoxes()));
  Prices("DROP", drop);
  Prices("FLAT", std::vector<Day>(kBars, Day{9.5, 10, 9, 9.5}));
  List({"TWO", "FLAT", "DROP", "GONE"});
  BuySignalScan(s, quiet);
  EXPECT_EQ(s.resultText, "TWO\r\nDROP\r\n");
  BelowStopLossScan(s, quiet);
  EXPECT_EQ(s.resultText, "DROP\r\n");
  s.config.useUnusualVolume = false;  // corvanes only
  BuySignalScan(s, quiet);
  EXPECT_EQ(s.resultText, "");
}

TEST_F(ScansTest, ProgressCountsFromZeroAndACancelledScanKeepsWhatItFound) {
  s.config.useUnusualVolume = true;
  Prices("TWO", Loud(test::TwoBoxes()));
  List({"TWO", "TWO", "TWO"});
  RecordingProgress all;
  BuySignalScan(s, all);
  EXPECT_EQ(all.texts,
            (std::vector<std::string>{"Processing stock #0 of 2", "Processing stock #1 of 2",
                                      "Processing stock #2 of 2"}));
  RecordingProgress stopped(1);
  BuySignalScan(s, stopped);
  EXPECT_EQ(s.resultText, "TWO\r\n");
  // An empty list scans nothing and leaves an empty result, even after a scan that found some.
  List({});
  BuySignalScan(s, quiet);
  EXPECT_EQ(s.resultText, "");
}

}  // namespace
}  // namespace halvard::runs
