#pragma once
// What the download and schedule commands start from: the session (settings and folders), the
// event log file, the terminal's progress (Ctrl-C stops a request or a retry wait at once) and
// the price downloads over them. The downloader's notices (a failed symbol and why, a trimmed
// history) go to stderr at once.

#include <memory>

#include "command_line.h"

#include "cli_context.h"
#include "halvard/platform/event_log.h"
#include "halvard/runs/price_downloads.h"
#include "terminal_progress.h"

namespace halvard::cli {

struct DownloadContext {
  explicit DownloadContext(const GlobalOptions& options);
  // With a provider chain, how many symbols each service served, on stderr.
  void ReportServed();

  std::unique_ptr<runs::Session> session;
  platform::FileEventLog log;
  TerminalProgress progress;
  runs::PriceDownloads downloads;
};

// What an interrupted download leaves: every file it finished is written whole.
inline constexpr const char* kDownloadsKept = "the price files downloaded so far are kept";

// --skip-existing, the window's "Skip Existing Files".
void AddSkipExisting(Command& command, bool& skipExisting);

// Every list's file, checked before anything is fetched so a mistyped name costs no download.
std::vector<std::filesystem::path> ExistingLists(const settings::Config& config,
                                                 const std::vector<std::string>& names);

}  // namespace halvard::cli
