#include "download_context.h"

#include <iostream>

#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"

namespace halvard::cli {

DownloadContext::DownloadContext(const GlobalOptions& options)
    : session(OpenSession(options, StartMode::kIndexMayFail)),
      downloads(OpenServices(options, *session), session->config.StockFilePath, log, progress,
                [](const std::string& notice) { std::cerr << "halvard: " << notice << "\n"; }) {}

void DownloadContext::ReportServed() {
  if (const std::string served = downloads.downloader().ServedSummary(); !served.empty()) {
    std::cerr << "halvard: " << served << "\n";
  }
}

std::vector<std::filesystem::path> ExistingLists(const settings::Config& config,
                                                 const std::vector<std::string>& names) {
  std::vector<std::filesystem::path> paths;
  for (const std::string& name : names) {
    paths.push_back(data::WatchListPath(config.IncFilePath, name));
    if (!platform::FileExists(paths.back())) {
      throw Error("watch list " + paths.back().string() + " does not exist");
    }
  }
  return paths;
}

void AddSkipExisting(Command& command, bool& skipExisting) {
  command.Flag("--skip-existing", skipExisting,
               "Leave symbols that have a price file alone (\"Skip Existing Files\")");
}

}  // namespace halvard::cli
