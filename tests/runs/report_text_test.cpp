#include "halvard/runs/report_text.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::runs {
namespace {

TEST(SaveReportTest, TheReportIsSavedWithOneMoreLineEndAndReplacesAnOlderFile) {
  test::TempDir dir;
  const auto file = dir.path() / "report.txt";
  test::WriteText(file, "an older, longer report that must not show through\r\n");
  SaveReport(file, "Line one\r\nLine two\r\n");
  EXPECT_EQ(test::ReadText(file), "Line one\r\nLine two\r\n\r\n");
}

TEST(SaveReportTest, AnEmptyReportIsOneLineEnd) {
  test::TempDir dir;
  SaveReport(dir.path() / "empty.txt", "");
  EXPECT_EQ(test::ReadText(dir.path() / "empty.txt"), "\r\n");
}

}  // namespace
}  // namespace halvard::runs
