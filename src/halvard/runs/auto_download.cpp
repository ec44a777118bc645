#include "halvard/runs/auto_download.h"

#include <cmath>

#include "halvard/data/download_schedule.h"
#include "halvard/data/watch_list.h"

namespace halvard::runs {

bool AutoDownload(const std::vector<std::string>& listNames, bool skipExisting, double today,
                  data::Downloader& downloader, settings::Config& config,
                  const settings::MRegistry& store, platform::Progress& progress,
                  const std::function<void(const std::string&)>& listDone) {
  if (listNames.empty()) return false;
  bool allDownloaded = true;
  const int total = static_cast<int>(listNames.size());
  for (int i = 0; i < total && !progress.Cancelled(); ++i) {
    progress.Step(i, total, std::string(kAutoDownloadListText) + listNames[i]);
    const auto path = data::WatchListPath(config.IncFilePath, listNames[i]);
    allDownloaded &=
        downloader.DownloadList(path, data::MonthsBefore(today, 12), today, skipExisting, progress);
    if (listDone && !progress.Cancelled()) listDone(listNames[i]);
  }
  if (progress.Cancelled()) return allDownloaded;
  config.downloadDate.serial = std::floor(today);
  settings::WriteSetting(config, store, "Download", "Date");
  return allDownloaded;
}

}  // namespace halvard::runs
