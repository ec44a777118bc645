#pragma once
// The investor's evening in one procedure: when the once-a-day download is due, the watch
// lists' prices are downloaded (and the date stored, as the scheduled download does); then the
// live report runs over each list and is written, as text and as JSON, into the reports folder
// (YYYY-MM-DD-LIST.txt and .json, atomically). What it found comes back as values for the front
// ends to print: the "Buy" rows, and per list the symbols checked, the stale prices and every
// failure. A failure (a symbol that did not download, a price file that did not load, a report
// that could not be written) never stops the other lists; it is listed in its list's report.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "halvard/data/download_schedule.h"
#include "halvard/platform/progress.h"
#include "halvard/runs/live_report.h"
#include "halvard/runs/price_downloads.h"
#include "halvard/runs/session.h"
#include "halvard/runs/sweep.h"

namespace halvard::runs {

struct DailyOptions {
  std::vector<std::string> lists;  // watch-list names, as typed
  RunSwitches switches;
  // The sweep levels of every list's report; nothing gives one pass with the current settings.
  std::optional<SweepLevels> levels;
  std::filesystem::path reportsFolder;  // created when missing
  bool skipExisting = false;            // for the download, "Skip Existing Files"
};

// One list's evening.
struct DailyList {
  std::string name;
  int checked = 0;  // the symbols of the list the report went through
  int stale = 0;    // of them, those whose newest day lies more than five trading days back
  std::vector<LiveRow> buys;          // every "Buy" row of the report, in report order
  std::vector<std::string> failures;  // "Failed to download BAD", "GONE: no price file", ...
  std::filesystem::path textFile, jsonFile;
};

struct DailyResult {
  data::ScheduleVerdict download = data::ScheduleVerdict::kDisabled;  // kDue: it downloaded
  std::string notDownloaded;  // why not, when it did not ("" after a download)
  std::vector<DailyList> lists;
  bool cancelled = false;  // stopped between two stocks or symbols; no later list was run

  bool failed() const;
};

// The whole evening at the moment now (a day count with the time of day as its fraction),
// which decides whether the download is due and dates the reports. Every list must exist (a
// halvard::Error before anything is fetched or written otherwise). The download goes through
// downloads, whose progress should be the same as progress.
DailyResult RunDaily(Session& session, PriceDownloads& downloads, const DailyOptions& options,
                     double now, platform::Progress& progress);

// A "Buy" row with the list it came from.
struct DailyBuy {
  std::string list;
  LiveRow row;
};
// Every list's "Buy" rows, newest signal first (rows of the same day keep their order).
std::vector<DailyBuy> BuysNewestFirst(const DailyResult& result);

// "sample: 40 symbols checked, 40 with stale prices, 2 Buy, 1 failure"
std::string DailySummaryLine(const DailyList& list);

}  // namespace halvard::runs
