#pragma once
// The one form every written price file takes, and the check that it loads. A download's answer
// and a repair of an existing file both go through here, so nothing the program writes can be a
// file its own loader then refuses.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "halvard/data/file_parser.h"

namespace halvard::data {

// Which lines of the source the stored form keeps.
enum class KeepLines {
  kPriceLines,  // an answer: only lines with at least six comma fields (stray text dropped)
  kNonEmpty,    // an existing file: every line but the empty ones
};

// A price file holds at most PriceSeries::kMaxBars days, the index file kMaxIndexCloses.
enum class FileKind { kPrice, kIndex };

struct StoredPriceText {
  std::string text;     // the header, then the newest day lines, each ended by one CR LF
  size_t dayLines = 0;  // the day lines the source held
  size_t keptDays = 0;  // those kept: the newest the loader reads at most

  bool trimmed() const { return keptDays < dayLines; }
};

// Lines may end in LF, CR LF or CR; the first line kept is the header, the rest day lines,
// newest first.
StoredPriceText ToStoredForm(std::string_view source, KeepLines keep,
                             FileKind kind = FileKind::kPrice);

// What the loader says of the text as the file path, or nothing when it loads.
std::optional<PriceFileError> LoadProblem(std::string_view text, const std::string& path,
                                          FileKind kind = FileKind::kPrice);

// "kept the newest 1001 of 4,028 days".
std::string KeptDaysText(const StoredPriceText& stored);

// The index file of a stock files folder is ^IXIC.txt (any case).
FileKind KindOfFileName(std::string_view fileName);

}  // namespace halvard::data
