#include "halvard/platform/event_log.h"

#include <gtest/gtest.h>

#include <regex>

#include "test_support.h"

namespace halvard::platform {
namespace {

TEST(EventLog, OneEntryALineWithTimeSeverityAndText) {
  std::tm t{};
  t.tm_year = 103;
  t.tm_mon = 10;
  t.tm_mday = 7;
  t.tm_hour = 16;
  t.tm_min = 5;
  t.tm_sec = 9;
  EXPECT_EQ(FormatEventLogLine(t, EventType::kError, "Failed to download AAPL"),
            "2003-11-07 16:05:09\tError\tFailed to download AAPL");
  // A logged answer body keeps to one line.
  EXPECT_EQ(FormatEventLogLine(t, EventType::kInformation, "<html>\r\n<b>x</b>\n\n"),
            "2003-11-07 16:05:09\tInformation\t<html>\\n<b>x</b>\\n\\n");
}

TEST(EventLog, AppendsToTheFileAndMakesItsFolder) {
  test::TempDir dir;
  FileEventLog log(dir / "state" / "halvard600" / "debug.log");
  log.Write(EventType::kInformation, "Downloading WatchList : sample");
  log.Write(EventType::kError, "Failed to download NOPE");
  const std::regex expected(
      "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\tInformation\tDownloading WatchList : sample\r\n"
      "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\tError\tFailed to download NOPE\r\n");
  EXPECT_TRUE(std::regex_match(test::ReadText(log.file()), expected)) << test::ReadText(log.file());
}

}  // namespace
}  // namespace halvard::platform
