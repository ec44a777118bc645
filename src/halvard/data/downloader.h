#pragma once
// Downloader: fetches daily price histories from a PriceSource and stores each as the symbol's
// price file (SYMBOL.txt in the stock files folder) in the form the loader reads.

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "halvard/data/price_sources.h"
#include "halvard/platform/event_log.h"
#include "halvard/platform/progress.h"

namespace halvard::data {

class Downloader {
 public:
  // What the user should see at once, beside the event log: "Failed to download SYMBOL: why"
  // for every failed symbol, "SYMBOL: kept the newest 1001 of N days" for a trimmed answer.
  using Notice = std::function<void(const std::string&)>;

  Downloader(std::filesystem::path stockFolder, PriceSource& source, platform::EventLog& log,
             Notice notice = {});

  // True when the file was written, or skipped because it exists and skipExisting is set (no
  // request is made then). False, leaving any old file byte for byte as it was, when:
  // the symbol is not a name (no request is made); the source failed (its reason goes to the
  // event log as an error); the answer had fewer than 12 LF-separated pieces (the body goes to
  // the event log as information); or its stored form would not load.
  // The stored form: every line of the answer with at least six comma fields, whatever its
  // line end, followed by one CR LF; the header and the newest 1001 day lines (a notice says
  // when more were sent).
  bool DownloadSymbol(const std::string& symbol, double startDate, double endDate,
                      bool skipExisting);

  // Downloads the symbols in the order given; a failed one does not stop the others. Each
  // symbol is a progress step; a cancel stops between two symbols. True when no symbol failed.
  bool DownloadSymbols(const std::vector<std::string>& symbols, double startDate, double endDate,
                       bool skipExisting, platform::Progress& progress);

  // DownloadSymbols over every symbol of the watch list file, in list order; a failed symbol is
  // noted in the error text ("Failed to download SYMBOL" + CR LF) and the event log as well. A
  // missing list file, or a line of it that is not a symbol, is a halvard::Error before any
  // request.
  bool DownloadList(const std::filesystem::path& listPath, double startDate, double endDate,
                    bool skipExisting, platform::Progress& progress);

  // How each symbol of DownloadSymbols and DownloadList ended since this downloader was made, in
  // the order asked (a symbol stopped by a cancel is not among them).
  struct Outcome {
    std::string symbol;
    std::string failure;  // why it failed, as the notice says; empty when stored or skipped
  };
  const std::vector<Outcome>& outcomes() const { return outcomes_; }

  // The failures of the last DownloadList.
  const std::string& errorText() const { return errorText_; }

  // With a provider chain: how many symbols each service served since this downloader was made,
  // "served by chart 12, tiingo 3" (services in the order they first served); empty otherwise.
  // Each symbol's service is also written to the event log ("AAPL served by chart").
  std::string ServedSummary() const;

 private:
  std::filesystem::path stockFolder_;
  PriceSource& source_;
  // Both say why in a notice and return false; FailLogged writes the error entry as well.
  bool Fail(const std::string& symbol, const std::string& why);
  bool FailLogged(const std::string& symbol, const std::string& why);
  using Failed = std::function<void(const std::string& symbol)>;
  bool EachSymbol(const std::vector<std::string>& symbols, double startDate, double endDate,
                  bool skipExisting, platform::Progress& progress, const Failed& failed);

  platform::EventLog& log_;
  Notice notice_;
  std::string errorText_;
  std::string lastFailure_;
  std::vector<Outcome> outcomes_;
  std::vector<std::pair<std::string, int>> served_;
};

// Why an answer would not be stored as the symbol's price file (too short, no day line, a stored
// form that does not load), or empty when it would be: the test DownloadSymbol applies.
std::string StoredAnswerProblem(std::string_view body, const std::string& symbol);

// The least number of LF-separated pieces of an answer that holds price data: the header, ten
// days and what follows the last line end.
inline constexpr size_t kLeastAnswerPieces = 12;

}  // namespace halvard::data
