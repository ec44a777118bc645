#include "halvard/runs/daily_report.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "halvard/data/file_parser.h"
#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/runs/auto_download.h"
#include "halvard/runs/daily_report_files.h"
#include "halvard/runs/json_fields.h"
#include "halvard/runs/live_json_value.h"
#include "halvard/runs/stale_prices.h"

namespace halvard::runs {
namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

void RequireDailyLists(const settings::Config& config, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const fs::path path = data::WatchListPath(config.IncFilePath, name);
    if (!platform::FileExists(path)) throw Error("watch list " + path.string() + " does not exist");
  }
}

std::vector<std::string> FailureLines(std::string_view text) {
  std::vector<std::string> lines;
  platform::LineReader reader(text);
  for (std::string_view line; reader.Next(line);) lines.emplace_back(line);
  return lines;
}

// The prices just downloaded may include the index's: the RS lines of the reports use them.
void ReloadIndexAfterDownload(Session& s) {
  try {
    s.LoadIndex();
  } catch (const Error&) {
    // A download stores only files that load: this is an index changed by hand since the
    // start, which the next run over a list will name.
  }
}

// What the report found, from its first pass (every pass reads the same files) and its "Buy"
// rows from all of them.
void TallyDaily(const LiveReport& report, double today, DailyList& list) {
  const auto& passes = report.passes();
  for (const LivePass& pass : passes) {
    for (const LiveRow& row : pass.rows) {
      if (row.action == LiveRow::Action::kBuy) list.buys.push_back(row);
    }
  }
  if (passes.empty()) return;
  for (const LiveRow& row : passes.front().rows) {
    ++list.checked;
    if (row.action == LiveRow::Action::kNoPrices) {
      list.failures.push_back(row.symbol + ": Error opening stock file");
    } else if (PricesAreStale(row.newestDate, today)) {
      ++list.stale;
    }
  }
}

std::string DailyDownloadLine(const DailyResult& result, double today) {
  if (result.download == data::ScheduleVerdict::kDue) {
    return "Prices downloaded for the twelve months up to " + platform::FormatShortDate(today);
  }
  return "Prices not downloaded: " + result.notDownloaded;
}

std::string DailyReportText(const DailyResult& result, const DailyList& list,
                            const LiveReport& report, double today) {
  std::string text = "Daily report for " + list.name + " on " + platform::FormatShortDate(today) +
                     "\r\n" + DailyDownloadLine(result, today) + "\r\n" + report.text() +
                     DailySummaryLine(list) + "\r\n";
  if (!list.failures.empty()) {
    text += "Failures:\r\n";
    for (const std::string& failure : list.failures) text += failure + "\r\n";
  }
  return text;
}

std::string DailyReportJson(const DailyResult& result, const DailyList& list,
                            const LiveReport& report, double today) {
  ordered_json download{{"done", result.download == data::ScheduleVerdict::kDue}};
  if (!result.notDownloaded.empty()) download["reason"] = result.notDownloaded;
  return JsonText({{"list", list.name},
                   {"date", IsoDate(today)},
                   {"download", std::move(download)},
                   {"checked", list.checked},
                   {"stale", list.stale},
                   {"failures", list.failures},
                   {"report", LiveJsonValue(report)}});
}

// Both files, each written whole or not at all; a file that fails is one more failure, which
// the JSON written after the text still lists.
void WriteDailyReports(const fs::path& folder, const DailyResult& result, DailyList& list,
                       const LiveReport& report, double today) {
  const std::string stem = DailyReportStem(today, list.name);
  std::error_code error;
  fs::create_directories(folder, error);
  const auto write = [&](const std::string& extension, auto&& content, fs::path& written) {
    const fs::path file = folder / (stem + extension);
    try {
      platform::WriteFileAtomically(file, content());
      written = file;
    } catch (const Error& e) {
      list.failures.push_back(e.what());
    }
  };
  write(
      ".txt", [&] { return DailyReportText(result, list, report, today); }, list.textFile);
  write(
      ".json", [&] { return DailyReportJson(result, list, report, today); }, list.jsonFile);
}

}  // namespace

bool DailyResult::failed() const {
  return std::any_of(lists.begin(), lists.end(),
                     [](const DailyList& list) { return !list.failures.empty(); });
}

DailyResult RunDaily(Session& session, PriceDownloads& downloads, const DailyOptions& options,
                     double now, platform::Progress& progress) {
  RequireDailyLists(session.config, options.lists);
  const double today = std::floor(now);
  DailyResult result;
  result.download = data::CheckSchedule(now, session.config);
  std::vector<std::vector<std::string>> downloadFailures(options.lists.size());
  if (result.download == data::ScheduleVerdict::kDue) {
    size_t done = 0;
    AutoDownload(options.lists, options.skipExisting, today, downloads.downloader(), session.config,
                 session.store(), progress, [&](const std::string&) {
                   downloadFailures[done++] = FailureLines(downloads.downloader().errorText());
                 });
    if (progress.Cancelled()) {
      result.cancelled = true;
      return result;
    }
    ReloadIndexAfterDownload(session);
  } else {
    result.notDownloaded = data::ScheduleVerdictText(result.download, session.config);
  }
  // Computed once: a sweep leaves its last level in the settings, which the next list must not
  // start from.
  const SweepLevels levels = options.levels.value_or(DefaultLevels(session.config));
  for (size_t i = 0; i < options.lists.size(); ++i) {
    DailyList list;
    list.name = options.lists[i];
    list.failures = std::move(downloadFailures[i]);
    LiveReport report(session, progress, today);
    report.levels = levels;
    std::string stopped;
    try {
      session.SelectList(list.name);
      report.Run(options.switches);
    } catch (const Error& e) {
      stopped = e.what();  // a price file that does not load stops this list's report there
    }
    if (progress.Cancelled()) {
      result.cancelled = true;  // as after any stopped run, nothing is written
      return result;
    }
    TallyDaily(report, today, list);
    if (!stopped.empty()) list.failures.push_back(stopped);
    WriteDailyReports(options.reportsFolder, result, list, report, today);
    result.lists.push_back(std::move(list));
  }
  return result;
}

std::vector<DailyBuy> BuysNewestFirst(const DailyResult& result) {
  std::vector<DailyBuy> buys;
  for (const DailyList& list : result.lists) {
    for (const LiveRow& row : list.buys) buys.push_back({list.name, row});
  }
  std::stable_sort(buys.begin(), buys.end(), [](const DailyBuy& a, const DailyBuy& b) {
    return a.row.signalDate > b.row.signalDate;
  });
  return buys;
}

std::string DailySummaryLine(const DailyList& list) {
  const size_t failures = list.failures.size();
  return list.name + ": " + std::to_string(list.checked) + " symbols checked, " +
         std::to_string(list.stale) + " with stale prices, " + std::to_string(list.buys.size()) +
         " Buy, " +
         (failures == 0 ? std::string("no failure")
                        : std::to_string(failures) + (failures == 1 ? " failure" : " failures"));
}

}  // namespace halvard::runs
