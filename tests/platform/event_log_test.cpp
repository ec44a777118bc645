#include "halvard/platform/event_log.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "test_support.h"

namespace halvard::platform {
namespace {

// The text with every digit shown as 9: the shape of the times the log wrote just now.
std::string DigitsAsNines(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, '9');
  return text;
}

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
  EXPECT_EQ(DigitsAsNines(test::ReadText(log.file())),
            "9999-99-99 99:99:99\tInformation\tDownloading WatchList : sample\r\n"
            "9999-99-99 99:99:99\tError\tFailed to download NOPE\r\n");
}

}  // namespace
}  // namespace halvard::platform
