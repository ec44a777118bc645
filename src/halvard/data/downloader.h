#pragma once
// Downloader: fetches daily price histories from a PriceSource and stores each as the symbol's
// price file (SYMBOL.txt in the stock files folder) in the form the loader reads.

#include <filesystem>
#include <string>

#include "halvard/data/price_sources.h"
#include "halvard/platform/event_log.h"
#include "halvard/platform/progress.h"

namespace halvard::data {

class Downloader {
 public:
  Downloader(std::filesystem::path stockFolder, PriceSource& source, platform::EventLog& log);

  // True when the file was written, or skipped because it exists and skipExisting is set (no
  // request is made then). False when the answer had fewer than 12 LF-separated pieces (the
  // body goes to the event log as information and any old file stays as it was), or when the
  // source failed (its reason goes to the event log as an error). When written, the file holds
  // every piece with at least six comma fields, as it stands, each followed by CR LF.
  bool DownloadSymbol(const std::string& symbol, double startDate, double endDate,
                      bool skipExisting);

  // Downloads every symbol of the watch list file, in list order; a failed symbol is noted in
  // the error text ("Failed to download SYMBOL" + CR LF) and the event log, and the list goes
  // on. Each symbol is a progress step; a cancel stops between two symbols. True when no
  // symbol failed. A missing list file is a halvard::Error.
  bool DownloadList(const std::filesystem::path& listPath, double startDate, double endDate,
                    bool skipExisting, platform::Progress& progress);

  // The failures of the last DownloadList.
  const std::string& errorText() const { return errorText_; }

 private:
  std::filesystem::path stockFolder_;
  PriceSource& source_;
  platform::EventLog& log_;
  std::string errorText_;
};

// The least number of LF-separated pieces of an answer that holds price data: the header, ten
// days and what follows the last line end.
inline constexpr size_t kLeastAnswerPieces = 12;

}  // namespace halvard::data
