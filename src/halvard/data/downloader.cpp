#include "halvard/data/downloader.h"

#include <algorithm>

#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"

namespace halvard::data {
namespace fs = std::filesystem;
using platform::EventType;

namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  size_t start = 0;
  for (size_t at; (at = text.find(separator, start)) != std::string_view::npos; start = at + 1) {
    pieces.push_back(text.substr(start, at - start));
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

// The pieces that are day lines or the header, each with CR LF. A piece is not trimmed, so a
// CR the service ended its lines with stays before the added CR LF.
std::string PriceFileText(const std::vector<std::string_view>& pieces) {
  std::string text;
  for (const std::string_view piece : pieces) {
    if (std::count(piece.begin(), piece.end(), ',') < 5) continue;
    text += piece;
    text += "\r\n";
  }
  return text;
}

}  // namespace

Downloader::Downloader(fs::path stockFolder, PriceSource& source, platform::EventLog& log)
    : stockFolder_(std::move(stockFolder)), source_(source), log_(log) {}

bool Downloader::DownloadSymbol(const std::string& symbol, double startDate, double endDate,
                                bool skipExisting) {
  const fs::path path = stockFolder_ / (symbol + ".txt");
  if (skipExisting && platform::FileExists(path)) return true;
  const FetchResult fetched = source_.Fetch(symbol, startDate, endDate);
  if (!fetched.ok()) {
    log_.Write(EventType::kError, "Download of " + symbol + " failed: " + fetched.failure);
    return false;
  }
  const std::vector<std::string_view> pieces = Split(fetched.body, '\n');
  if (pieces.size() < kLeastAnswerPieces) {
    log_.Write(EventType::kInformation, fetched.body);
    return false;
  }
  try {
    platform::WriteFileAtomically(path, PriceFileText(pieces));
  } catch (const Error& e) {
    log_.Write(EventType::kError, "Download of " + symbol + " failed: " + e.what());
    return false;
  }
  return true;
}

bool Downloader::DownloadList(const fs::path& listPath, double startDate, double endDate,
                              bool skipExisting, platform::Progress& progress) {
  errorText_.clear();
  const std::vector<std::string> symbols = ReadWatchList(listPath);
  const int total = static_cast<int>(symbols.size());
  for (int i = 0; i < total && !progress.Cancelled(); ++i) {
    const std::string& symbol = symbols[i];
    progress.Step(i, total, symbol);
    if (!DownloadSymbol(symbol, startDate, endDate, skipExisting)) {
      errorText_ += "Failed to download " + symbol + "\r\n";
      log_.Write(EventType::kError, "Failed to download " + symbol);
    }
  }
  return errorText_.empty();
}

}  // namespace halvard::data
