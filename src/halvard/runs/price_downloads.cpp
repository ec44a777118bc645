#include "halvard/runs/price_downloads.h"

namespace halvard::runs {
using platform::EventType;

std::string ListDownloadAnswer::text() const {
  return done ? "Inc List Successfully download" : "Error downloading inc list - " + failures;
}

PriceDownloads::PriceDownloads(const settings::ServiceSettings& services,
                               std::filesystem::path stockFolder, platform::EventLog& log,
                               platform::Progress& progress, data::Downloader::Notice notice)
    : log_(log),
      progress_(progress),
      source_(data::MakePriceSource(services, {[&progress] { return progress.Cancelled(); },
                                               [&log](const std::string& retry) {
                                                 log.Write(EventType::kInformation, retry);
                                               }})),
      downloader_(std::move(stockFolder), *source_, log, std::move(notice)) {}

bool PriceDownloads::DownloadSymbols(const std::vector<std::string>& symbols,
                                     const DownloadRequest& request) {
  return downloader_.DownloadSymbols(symbols, request.from, request.to, request.skipExisting,
                                     progress_);
}

std::optional<ListDownloadAnswer> PriceDownloads::DownloadList(
    const std::string& name, const std::filesystem::path& listFile,
    const DownloadRequest& request) {
  log_.Write(EventType::kInformation, "Downloading WatchList : " + name);
  const size_t before = downloader_.outcomes().size();
  const bool done =
      downloader_.DownloadList(listFile, request.from, request.to, request.skipExisting, progress_);
  if (progress_.Cancelled()) return std::nullopt;
  log_.Write(EventType::kInformation,
             (done ? "Done Downloading WatchList : " : "Error Downloading WatchList : ") + name);
  ListDownloadAnswer answer{done, downloader_.errorText(), {}};
  const auto& outcomes = downloader_.outcomes();
  for (size_t k = before; k < outcomes.size(); ++k) {
    if (!outcomes[k].failure.empty()) answer.failedSymbols.push_back(outcomes[k].symbol);
  }
  return answer;
}

}  // namespace halvard::runs
