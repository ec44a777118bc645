#pragma once
// PriceDownloads: the price downloads every front end starts (the download and schedule
// commands, the Downloader window and its scheduled download). It makes the source the
// [Services] section chooses, whose running request or retry wait stops as soon as the run's
// progress is cancelled and whose retries go to the event log, and the downloader over it. A
// watch list is downloaded with the same event-log entries whoever starts it.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvard/data/downloader.h"
#include "halvard/platform/event_log.h"
#include "halvard/platform/progress.h"
#include "halvard/settings/services.h"

namespace halvard::runs {

// The days asked for (day counts from 12/30/1899, both included) and whether a symbol that
// has a price file is left alone ("Skip Existing Files").
struct DownloadRequest {
  double from = 0;
  double to = 0;
  bool skipExisting = false;
};

// How a watch list's download ended: done, or the failed symbols ("Failed to download SYMBOL"
// and CR LF each).
struct ListDownloadAnswer {
  bool done = false;
  std::string failures;
  std::vector<std::string> failedSymbols;  // the same symbols, in list order
  // "Inc List Successfully download", or "Error downloading inc list - " and the failures.
  std::string text() const;
};

class PriceDownloads {
 public:
  // The progress is the run's: one step per symbol, and its cancel stops the run. The notice
  // is the downloader's (a failed symbol and why, a trimmed history).
  PriceDownloads(const settings::ServiceSettings& services, std::filesystem::path stockFolder,
                 platform::EventLog& log, platform::Progress& progress,
                 data::Downloader::Notice notice = {});

  // The symbols in turn, a progress step each. True when none failed; a cancel stops before
  // the next symbol and leaves every file finished so far.
  bool DownloadSymbols(const std::vector<std::string>& symbols, const DownloadRequest& request);

  // One watch list file as the Download button does it: "Downloading WatchList : NAME" in the
  // event log, every symbol of the list, then "Done Downloading WatchList : NAME" or "Error
  // Downloading WatchList : NAME". Nothing (and no closing entry) when the run was cancelled.
  std::optional<ListDownloadAnswer> DownloadList(const std::string& name,
                                                 const std::filesystem::path& listFile,
                                                 const DownloadRequest& request);

  // For the scheduled download, which walks its lists itself.
  data::Downloader& downloader() { return downloader_; }

 private:
  platform::EventLog& log_;
  platform::Progress& progress_;
  std::unique_ptr<data::PriceSource> source_;
  data::Downloader downloader_;
};

}  // namespace halvard::runs
