#include "halvard/runs/scans.h"

#include "halvard/runs/scan_commands.h"
#include "halvard/runs/scan_list_names.h"
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
  EXPECT_EQ(HighScan(s, quiet, 4, 5), (ScanSymbols{"RISE", "TIE"}));
  // The 52-week scan with no days of grace: only a high made on the newest day counts.
  s.config.period52week = 0;
  const ScanCommand& fiftyTwo = *FindScanCommand("52week");
  EXPECT_EQ(fiftyTwo.run(s, quiet), (ScanSymbols{"RISE"}));
  EXPECT_EQ(fiftyTwo.listName(s.config), "52WeekHigh");
  // Ten weeks is 50 days, always within the 115 days of the X-week scan.
  s.config.periodXQuantity = 10;
  const ScanCommand& xWeek = *FindScanCommand("xweek");
  EXPECT_EQ(xWeek.run(s, quiet), (ScanSymbols{"PEAK", "RISE", "TIE"}));
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
  EXPECT_EQ(CorvaneScan(s, quiet, 1000), (ScanSymbols{"CORV"}));
  EXPECT_EQ(CorvaneScan(s, quiet, 50), (ScanSymbols{"CORV"}));
  EXPECT_EQ(CorvaneScan(s, quiet, 49), (ScanSymbols{}));
}

TEST_F(ScansTest, InABoxListsOnlyAStockWhoseNewestBoxIsStillOpen) {
  auto open = test::TwoBoxes();
  open.resize(12);  // box B not broken yet
  Prices("OPEN", open);
  Prices("TWO", test::TwoBoxes());
  Prices("FLAT", std::vector<Day>(kBars, Day{9.5, 10, 9, 9.5}));
  List({"TWO", "OPEN", "FLAT", "GONE"});
  EXPECT_EQ(InABoxScan(s, quiet), (ScanSymbols{"OPEN"}));
}

TEST_F(ScansTest, UnusualVolumeCanListOnlyTheFirstStockThatLoads) {
  std::vector<Day> quiet(kBars, Day{10, 10.5, 9.5, 10, 100});
  std::vector<Day> loud = quiet;
  for (const int day : {5, 6, 7}) loud[kBars - 1 - day] = {12, 12.5, 11.5, 12, 1000};
  Prices("QUIET", quiet);
  Prices("LOUD", loud);
  // A first stock without unusual volume uses the position up for the rest of the list.
  List({"QUIET", "LOUD"});
  EXPECT_EQ(UnusualVolumeScan(s, this->quiet, 12), (ScanSymbols{}));
  List({"GONE", "LOUD", "LOUD"});
  // The second LOUD finds the position used up.
  EXPECT_EQ(UnusualVolumeScan(s, this->quiet, 12), (ScanSymbols{"LOUD"}));
  // The engine's found flag is never cleared, so from now on a quiet first stock is listed.
  List({"QUIET", "LOUD"});
  EXPECT_EQ(UnusualVolumeScan(s, this->quiet, 12), (ScanSymbols{"QUIET"}));
}

TEST_F(ScansTest, AFileThatDoesNotLoadEndsTheScanWithTheSymbolsPassedBeforeIt) {
  auto open = test::TwoBoxes();
  open.resize(12);  // box B not broken yet
  Prices("OPEN", open);
  test::WriteText(dir / "BAD.txt", "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,x,1,100\r\n");
  List({"OPEN", "BAD", "OPEN"});
  try {
    InABoxScan(s, quiet);
    ADD_FAILURE() << "BAD.txt was loaded";
  } catch (const ScanStopped& e) {
    EXPECT_NE(std::string(e.what()).find("BAD.txt line 2: the low \"x\" is not a number"),
              std::string::npos)
        << e.what();
    EXPECT_EQ(PassedBefore(e), (ScanSymbols{"OPEN"}));
    // Saved, the list would be the symbols, each with CR LF, and one CR LF more.
    SaveResultList(e.passed(), dir / "partial.inc");
    EXPECT_EQ(test::ReadText(dir / "partial.inc"), "OPEN\r\n\r\n");
  }
  // An error before the walk has passed nothing.
  const Error early("the scan did not start");
  EXPECT_EQ(PassedBefore(early), ScanSymbols{});
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
  EXPECT_EQ(BuySignalScan(s, quiet), (ScanSymbols{"TWO", "DROP"}));
  EXPECT_EQ(BelowStopLossScan(s, quiet), (ScanSymbols{"DROP"}));
  s.config.useUnusualVolume = false;  // corvanes only
  EXPECT_EQ(BuySignalScan(s, quiet), (ScanSymbols{}));
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
  EXPECT_EQ(BuySignalScan(s, stopped), (ScanSymbols{"TWO"}));
  // An empty list scans nothing and leaves an empty result, even after a scan that found some.
  List({});
  EXPECT_EQ(BuySignalScan(s, quiet), (ScanSymbols{}));
}

TEST(ScanListNames, TheXWeekScanNamesItsWeeks) {
  EXPECT_EQ(XWeekHighListName(26), "26WeekHigh");
  EXPECT_EQ(XWeekHighListName(10), "10WeekHigh");
}

}  // namespace
}  // namespace halvard::runs
