#pragma once
// Where the daily reports are kept: one pair of files per day and list in the reports folder,
// YYYY-MM-DD-LIST.txt (the report as text, CR LF) and YYYY-MM-DD-LIST.json, so the names sort
// by day. The desktop program's "Today's Report" shows the newest day's.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace halvard::runs {

// "2026-11-24-sample": the day and the list's file name without its folder and ".inc".
std::string DailyReportStem(double day, const std::string& list);

struct LatestDailyReports {
  std::string day;                           // "2026-11-24"
  std::vector<std::filesystem::path> files;  // that day's text reports, by list name
  std::string text;                          // their texts one after another (CR LF)
};

// The text reports of the newest day in the folder; nothing when it holds none (or is missing).
// A report that cannot be read is a halvard::Error naming it.
std::optional<LatestDailyReports> FindLatestDailyReports(const std::filesystem::path& folder);

}  // namespace halvard::runs
