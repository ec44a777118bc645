#include "halvard/data/stored_price_text.h"

#include <algorithm>
#include <memory>

#include "halvard/platform/line_reader.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/text.h"

namespace halvard::data {

namespace {

size_t MaxDays(FileKind kind) {
  return static_cast<size_t>(kind == FileKind::kPrice ? PriceSeries::kMaxBars
                                                      : PriceSeries::kMaxIndexCloses);
}

}  // namespace

StoredPriceText ToStoredForm(std::string_view source, KeepLines keep, FileKind kind) {
  StoredPriceText stored;
  const size_t maxDays = MaxDays(kind);
  platform::LineReader reader(source);
  bool header = true;
  for (std::string_view line; reader.Next(line);) {
    const bool kept = keep == KeepLines::kPriceLines
                          ? std::count(line.begin(), line.end(), ',') >= 5
                          : !line.empty();
    if (!kept) continue;
    if (!header && stored.dayLines++ >= maxDays) continue;
    header = false;
    stored.text.append(line);
    stored.text += "\r\n";
  }
  stored.keptDays = std::min(stored.dayLines, maxDays);
  return stored;
}

std::optional<PriceFileError> LoadProblem(std::string_view text, const std::string& path,
                                          FileKind kind) {
  // A series is a few hundred kilobytes: too much for the stack of a worker thread.
  const auto series = std::make_unique<PriceSeries>();
  try {
    if (kind == FileKind::kPrice) {
      LoadStockText(*series, text, path);
    } else {
      LoadIndexText(*series, text, path);
    }
  } catch (const PriceFileError& e) {
    return e;
  }
  return std::nullopt;
}

std::string KeptDaysText(const StoredPriceText& stored) {
  return "kept the newest " + std::to_string(stored.keptDays) + " of " +
         platform::FormatFixed(static_cast<double>(stored.dayLines), 0) + " days";
}

FileKind KindOfFileName(std::string_view fileName) {
  return platform::EqualsIgnoreCase(fileName, kIndexFileName) ? FileKind::kIndex : FileKind::kPrice;
}

}  // namespace halvard::data
