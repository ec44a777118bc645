#pragma once
// The once-a-day scheduled download's rule: whether it is due at any moment, which lists it
// takes and the label of its date. The download itself is runs::AutoDownload.

#include <string>
#include <string_view>
#include <vector>

#include "halvard/settings/config.h"

namespace halvard::data {

enum class ScheduleVerdict {
  kDue,         // enabled, the set time has passed, nothing downloaded yet today
  kDisabled,    // enableAutoDownload is off
  kBeforeTime,  // today's set time is still to come (or is this very second)
  kDoneToday,   // the last scheduled download was today (or, by a clock set back, later)
};

// now is a day count with the time of day as its fraction. Only the time of day of
// downloadTime and the day of downloadDate count.
ScheduleVerdict CheckSchedule(double now, const settings::Config& config);

// Why nothing was done, as the command line says it; empty for kDue.
std::string ScheduleVerdictText(ScheduleVerdict verdict, const settings::Config& config);

// The date the given number of months before a date; the day of month is kept, or the last
// day of a shorter month (3/31 minus one month is 2/28 or 2/29).
double MonthsBefore(double date, int months);

// The watch lists chosen for the scheduled download (downloadLists), in the order chosen.
std::vector<std::string> ChosenDownloadLists(const settings::Config& config);
void ChooseDownloadLists(settings::Config& config, const std::vector<std::string>& names);

// The label of the download window: " Data last downloaded on : " CR LF and the date, or
// "Unknown" while downloadDate still holds its unset value (1/1/00).
std::string DownloadDateLabel(const settings::DateValue& downloadDate);

}  // namespace halvard::data
