#include "halvard/data/download_schedule.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "test_support.h"

namespace halvard::data {
namespace {

using platform::SerialFromCivil;

double At(int y, int m, int d, int hour, int minute, int second) {
  return SerialFromCivil({y, m, d}) + (hour * 3600 + minute * 60 + second) / 86400.0;
}

TEST(DownloadSchedule, DueOnceADayAfterTheSetTime) {
  settings::Config config;
  config.enableAutoDownload = true;
  config.downloadTime.serial = *platform::ParseDateTime("4:00 PM");
  config.downloadDate.serial = SerialFromCivil({2017, 12, 28});
  const struct {
    double now;
    ScheduleVerdict verdict;
  } cases[] = {
      {At(2017, 12, 29, 15, 59, 59), ScheduleVerdict::kBeforeTime},
      {At(2017, 12, 29, 16, 0, 0), ScheduleVerdict::kBeforeTime},
      {At(2017, 12, 29, 16, 0, 1), ScheduleVerdict::kDue},
      {At(2017, 12, 29, 23, 59, 59), ScheduleVerdict::kDue},
      {At(2017, 12, 30, 0, 30, 0), ScheduleVerdict::kBeforeTime},  // after midnight: tomorrow's
      {At(2017, 12, 28, 17, 0, 0), ScheduleVerdict::kDoneToday},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CheckSchedule(c.now, config), c.verdict) << platform::FormatDateTime(c.now);
  }
  config.enableAutoDownload = false;
  EXPECT_EQ(CheckSchedule(At(2017, 12, 29, 17, 0, 0), config), ScheduleVerdict::kDisabled);
}

TEST(DownloadSchedule, MonthsBeforeKeepsTheDayWhereTheMonthHasIt) {
  const struct {
    platform::CivilDate from;
    int months;
    platform::CivilDate expected;
  } cases[] = {
      {{2017, 12, 29}, 12, {2016, 12, 29}}, {{2024, 2, 29}, 12, {2023, 2, 28}},
      {{2024, 3, 31}, 1, {2024, 2, 29}},    {{2024, 1, 15}, 1, {2023, 12, 15}},
      {{2023, 8, 31}, 6, {2023, 2, 28}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MonthsBefore(SerialFromCivil(c.from), c.months), SerialFromCivil(c.expected))
        << c.from.year << "-" << c.from.month << "-" << c.from.day;
  }
}

TEST(DownloadSchedule, TheLabelSaysUnknownUntilTheFirstDownload) {
  settings::Config fresh;
  fresh.ReadConfig(settings::MRegistry(test::TempDir().path() / "none.ini"));
  EXPECT_EQ(DownloadDateLabel(fresh.downloadDate), " Data last downloaded on : \r\nUnknown");
  EXPECT_EQ(DownloadDateLabel({SerialFromCivil({2003, 11, 7})}),
            " Data last downloaded on : \r\n11/7/2003");
}

TEST(DownloadSchedule, TheChosenListsAreKeptInOneSetting) {
  settings::Config config;
  EXPECT_TRUE(ChosenDownloadLists(config).empty());
  ChooseDownloadLists(config, {"tech.inc", "my list.inc"});
  EXPECT_EQ(config.downloadLists, "tech.inc,my list.inc");
  EXPECT_EQ(ChosenDownloadLists(config), (std::vector<std::string>{"tech.inc", "my list.inc"}));
  config.downloadLists = " a.inc , ,b.inc,";  // as a user may type it with "config set"
  EXPECT_EQ(ChosenDownloadLists(config), (std::vector<std::string>{"a.inc", "b.inc"}));
}

}  // namespace
}  // namespace halvard::data
