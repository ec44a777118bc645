#include "halvard/data/downloader.h"

#include <algorithm>
#include <optional>

#include "halvard/data/stored_price_text.h"
#include "halvard/data/symbol_name.h"
#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"

namespace halvard::data {
namespace fs = std::filesystem;
using platform::EventType;

namespace {

// The pieces of an answer split at its line ends: its lines, and one more after a final line
// end. For LF and CR LF answers this is the count of LF-separated pieces; an answer with CR
// line ends counts its lines as well.
size_t PieceCount(std::string_view body) {
  platform::LineReader reader(body);
  size_t lines = 0;
  for (std::string_view line; reader.Next(line);) ++lines;
  const bool endsLine = body.empty() || body.back() == '\n' || body.back() == '\r';
  return lines + (endsLine ? 1 : 0);
}

}  // namespace

std::string StoredAnswerProblem(std::string_view body, const std::string& symbol) {
  if (const size_t pieces = PieceCount(body); pieces < kLeastAnswerPieces) {
    return "an answer of " + std::to_string(pieces) + " lines is too short to be price data";
  }
  const StoredPriceText stored = ToStoredForm(body, KeepLines::kPriceLines);
  if (stored.dayLines == 0) return "no day line of six comma-separated fields";
  if (const auto refused = LoadProblem(stored.text, symbol + ".txt")) return refused->what();
  return "";
}

Downloader::Downloader(fs::path stockFolder, PriceSource& source, platform::EventLog& log,
                       Notice notice)
    : stockFolder_(std::move(stockFolder)),
      source_(source),
      log_(log),
      notice_(notice ? std::move(notice) : [](const std::string&) {}) {}

bool Downloader::Fail(const std::string& symbol, const std::string& why) {
  lastFailure_ = why;
  notice_("Failed to download " + symbol + ": " + why);
  return false;
}

bool Downloader::FailLogged(const std::string& symbol, const std::string& why) {
  log_.Write(EventType::kError, "Download of " + symbol + " failed: " + why);
  return Fail(symbol, why);
}

bool Downloader::DownloadSymbol(const std::string& symbol, double startDate, double endDate,
                                bool skipExisting) {
  if (const std::string problem = SymbolProblem(symbol); !problem.empty()) {
    return Fail(symbol, problem);
  }
  const fs::path path = stockFolder_ / (symbol + ".txt");
  if (skipExisting && platform::FileExists(path)) return true;
  const FetchResult fetched = source_.Fetch(symbol, startDate, endDate);
  if (fetched.cancelled) return false;  // the user stopped it: nothing to explain
  if (!fetched.ok()) return FailLogged(symbol, fetched.failure);
  if (const size_t pieces = PieceCount(fetched.body); pieces < kLeastAnswerPieces) {
    log_.Write(EventType::kInformation, fetched.body);
    return Fail(symbol, "an answer of " + std::to_string(pieces) +
                            " lines is too short to be price data (the event log has it)");
  }
  const StoredPriceText stored = ToStoredForm(fetched.body, KeepLines::kPriceLines);
  std::string problem;
  if (stored.dayLines == 0) {
    problem = "no day line of six comma-separated fields";
  } else if (const auto refused = LoadProblem(stored.text, symbol + ".txt")) {
    problem = refused->what();
  }
  if (!problem.empty()) return FailLogged(symbol, "the answer is not price data: " + problem);
  try {
    platform::WriteFileAtomically(path, stored.text);
  } catch (const Error& e) {
    return FailLogged(symbol, e.what());
  }
  if (!fetched.servedBy.empty()) {
    log_.Write(EventType::kInformation, symbol + " served by " + fetched.servedBy);
    const auto counted = std::find_if(served_.begin(), served_.end(),
                                      [&](const auto& s) { return s.first == fetched.servedBy; });
    if (counted != served_.end()) {
      ++counted->second;
    } else {
      served_.emplace_back(fetched.servedBy, 1);
    }
  }
  if (stored.trimmed()) {
    const std::string notice = symbol + ": " + KeptDaysText(stored);
    log_.Write(EventType::kInformation, notice);
    notice_(notice);
  }
  return true;
}

bool Downloader::EachSymbol(const std::vector<std::string>& symbols, double startDate,
                            double endDate, bool skipExisting, platform::Progress& progress,
                            const Failed& failed) {
  bool all = true;
  const int total = static_cast<int>(symbols.size());
  for (int i = 0; i < total && !progress.Cancelled(); ++i) {
    progress.Step(i, total, symbols[i]);
    // A symbol the user stopped is not a failure: nothing is said of it.
    const bool stored = DownloadSymbol(symbols[i], startDate, endDate, skipExisting);
    if (progress.Cancelled()) break;
    outcomes_.push_back({symbols[i], stored ? std::string() : lastFailure_});
    if (!stored) {
      all = false;
      failed(symbols[i]);
    }
  }
  return all;
}

bool Downloader::DownloadSymbols(const std::vector<std::string>& symbols, double startDate,
                                 double endDate, bool skipExisting, platform::Progress& progress) {
  return EachSymbol(symbols, startDate, endDate, skipExisting, progress, [](const std::string&) {});
}

std::string Downloader::ServedSummary() const {
  std::string summary;
  for (const auto& [service, count] : served_) {
    summary += (summary.empty() ? "served by " : ", ") + service + " " + std::to_string(count);
  }
  return summary;
}

bool Downloader::DownloadList(const fs::path& listPath, double startDate, double endDate,
                              bool skipExisting, platform::Progress& progress) {
  errorText_.clear();
  const std::vector<std::string> symbols = ReadWatchList(listPath, Quotes::kKeep, Names::kSymbols);
  return EachSymbol(symbols, startDate, endDate, skipExisting, progress,
                    [this](const std::string& symbol) {
                      errorText_ += "Failed to download " + symbol + "\r\n";
                      log_.Write(EventType::kError, "Failed to download " + symbol);
                    });
}

}  // namespace halvard::data
