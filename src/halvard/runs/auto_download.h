#pragma once
// The once-a-day scheduled download over the chosen watch lists, which records the day it was
// done in the settings store (when it is due: data/download_schedule.h).

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/data/downloader.h"
#include "halvard/platform/progress.h"
#include "halvard/settings/config.h"
#include "halvard/settings/registry.h"

namespace halvard::runs {

// What the scheduled download reports as it starts each list (a progress step), before the
// steps of the list's symbols; the download window puts it in its status bar.
inline constexpr std::string_view kAutoDownloadListText = "Automatically Downloading WatchList ";

// Downloads every list (names of the watch-list folder, in the order given) over the twelve
// months up to today, then stores today as downloadDate and writes that value to the store.
// Failed symbols are in the event log only. Returns true when no symbol failed. A cancel stops
// between two symbols and leaves downloadDate as it was; with no list nothing is downloaded and
// the date is not stored either (false), so the download stays due until lists are chosen.
// listDone, when given, is called after each list's download with its name, while the
// downloader's errorText still holds that list's failures.
bool AutoDownload(const std::vector<std::string>& listNames, bool skipExisting, double today,
                  data::Downloader& downloader, settings::Config& config,
                  const settings::MRegistry& store, platform::Progress& progress,
                  const std::function<void(const std::string&)>& listDone = {});

}  // namespace halvard::runs
