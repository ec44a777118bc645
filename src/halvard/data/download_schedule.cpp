#include "halvard/data/download_schedule.h"

#include <cmath>

#include "halvard/platform/date_text.h"
#include "halvard/platform/text.h"

namespace halvard::data {
namespace {

// Whole seconds of the time of day, so a time read back from text ("4:00 PM") and a clock
// reading compare without rounding noise.
long SecondOfDay(double serial) {
  const double fraction = serial - std::floor(serial);
  return std::lround(fraction * 86400) % 86400;
}

double DayOf(double serial) {
  return std::floor(serial);
}

const double kUnsetDownloadDate = platform::SerialFromCivil({2000, 1, 1});  // "1/1/00"

}  // namespace

ScheduleVerdict CheckSchedule(double now, const settings::Config& config) {
  if (!config.enableAutoDownload) return ScheduleVerdict::kDisabled;
  if (SecondOfDay(config.downloadTime.serial) >= SecondOfDay(now)) {
    return ScheduleVerdict::kBeforeTime;
  }
  if (DayOf(config.downloadDate.serial) >= DayOf(now)) return ScheduleVerdict::kDoneToday;
  return ScheduleVerdict::kDue;
}

std::string ScheduleVerdictText(ScheduleVerdict verdict, const settings::Config& config) {
  switch (verdict) {
    case ScheduleVerdict::kDue:
      return "";
    case ScheduleVerdict::kDisabled:
      return "automatic downloading is not enabled (Download/Enabled)";
    case ScheduleVerdict::kBeforeTime:
      return "the download time " + platform::FormatTime(config.downloadTime.serial) +
             " has not passed yet";
    case ScheduleVerdict::kDoneToday:
      return "already downloaded on " + platform::FormatShortDate(config.downloadDate.serial);
  }
  return "";
}

double MonthsBefore(double date, int months) {
  const platform::CivilDate d = platform::CivilFromSerial(date);
  const int index = d.year * 12 + (d.month - 1) - months;
  const int year = index / 12;
  const int month = index % 12 + 1;
  const double first = platform::SerialFromCivil({year, month, 1});
  const double next = platform::SerialFromCivil({month == 12 ? year + 1 : year, month % 12 + 1, 1});
  const int lastDay = static_cast<int>(next - first);
  return first + (d.day < lastDay ? d.day : lastDay) - 1;
}

std::vector<std::string> ChosenDownloadLists(const settings::Config& config) {
  std::vector<std::string> names;
  std::string_view rest = config.downloadLists;
  while (!rest.empty()) {
    const size_t comma = rest.find(',');
    const std::string_view name = platform::TrimSpaces(rest.substr(0, comma));
    if (!name.empty()) names.emplace_back(name);
    rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
  }
  return names;
}

void ChooseDownloadLists(settings::Config& config, const std::vector<std::string>& names) {
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : ",") + name;
  config.downloadLists = joined;
}

std::string DownloadDateLabel(const settings::DateValue& downloadDate) {
  const std::string date = DayOf(downloadDate.serial) == kUnsetDownloadDate
                               ? "Unknown"
                               : platform::FormatShortDate(downloadDate.serial);
  return " Data last downloaded on : \r\n" + date;
}

}  // namespace halvard::data
