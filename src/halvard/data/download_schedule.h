#pragma once
// The once-a-day scheduled download: the rule that decides, at any moment, whether it is due,
// and the download itself over the chosen watch lists.

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/data/downloader.h"
#include "halvard/settings/config.h"
#include "halvard/settings/registry.h"

namespace halvard::data {

// What the scheduled download reports as it starts each list (a progress step), before the
// steps of the list's symbols; the download window puts it in its status bar.
inline constexpr std::string_view kAutoDownloadListText = "Automatically Downloading WatchList ";

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

// Downloads every list (names of the watch-list folder, in the order given) over the twelve
// months up to today, then stores today as downloadDate and writes that value to the store.
// Failed symbols are in the event log only. Returns true when no symbol failed. A cancel stops
// between two symbols and leaves downloadDate as it was; with no list nothing is downloaded and
// the date is not stored either (false), so the download stays due until lists are chosen.
// listDone, when given, is called after each list's download with its name, while the
// downloader's errorText still holds that list's failures.
bool AutoDownload(const std::vector<std::string>& listNames, bool skipExisting, double today,
                  Downloader& downloader, settings::Config& config,
                  const settings::MRegistry& store, platform::Progress& progress,
                  const std::function<void(const std::string&)>& listDone = {});

// The label of the download window: " Data last downloaded on : " CR LF and the date, or
// "Unknown" while downloadDate still holds its unset value (1/1/00).
std::string DownloadDateLabel(const settings::DateValue& downloadDate);

}  // namespace halvard::data
