// The reports folder: the names of a day's two files, and which reports "Today's Report" shows.

#include "halvard/runs/daily_report_files.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

TEST(DailyReportFiles, TheNameIsTheDayAndTheListsFileName) {
  const double day = *platform::ParseDate("11/4/2026");
  EXPECT_EQ(DailyReportStem(day, "sample"), "2026-11-04-sample");
  EXPECT_EQ(DailyReportStem(day, "Sample.INC"), "2026-11-04-Sample");
  EXPECT_EQ(DailyReportStem(day + 0.75, "lists/tech.inc"), "2026-11-04-tech");
}

TEST(DailyReportFiles, TheNewestDaysTextReportsShowTogetherByListName) {
  test::TempDir dir;
  test::WriteText(dir / "2026-11-23-tech.txt", "old\r\n");
  test::WriteText(dir / "2026-11-24-tech.txt", "tech\r\n");
  test::WriteText(dir / "2026-11-24-banks.txt", "banks\r\n");
  test::WriteText(dir / "2026-11-24-banks.json", "{}");
  test::WriteText(dir / "notes.txt", "not a report");
  test::WriteText(dir / "2026-13-xx.txt", "no day of its own");
  std::filesystem::create_directory(dir / "2026-12-01-folder.txt");
  const auto latest = FindLatestDailyReports(dir.path());
  ASSERT_TRUE(latest);
  EXPECT_EQ(latest->day, "2026-11-24");
  EXPECT_EQ(latest->files, (std::vector<std::filesystem::path>{dir / "2026-11-24-banks.txt",
                                                               dir / "2026-11-24-tech.txt"}));
  EXPECT_EQ(latest->text, "banks\r\n\r\ntech\r\n");
}

TEST(DailyReportFiles, NoReportOrNoFolderIsNothing) {
  test::TempDir dir;
  EXPECT_FALSE(FindLatestDailyReports(dir.path()));
  test::WriteText(dir / "2026-11-24-tech.json", "{}");
  EXPECT_FALSE(FindLatestDailyReports(dir.path()));
  EXPECT_FALSE(FindLatestDailyReports(dir / "missing"));
}

}  // namespace
}  // namespace halvard::runs
