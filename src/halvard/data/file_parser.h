#pragma once
// The price-file loader. A price file is a header line followed by one line per trading day,
// newest first: date, open, high, low, close, volume (further fields ignored).

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "halvard/data/price_series.h"
#include "halvard/error.h"
#include "halvard/platform/folder_names.h"

namespace halvard::data {

// What the loader says of a price file or index file it refuses: the file, the line (0 when the
// problem is the file as a whole) and the problem, so a checker can list them one a line.
class PriceFileError : public Error {
 public:
  PriceFileError(const std::string& path, size_t line, const std::string& problem);
  size_t line() const { return line_; }
  const std::string& problem() const { return problem_; }

 private:
  size_t line_;
  std::string problem_;
};

// The symbol a path names: cut before the last ".", then keep what follows the last "/" or "\"
// ("data/XYZ.txt" gives XYZ).
std::string SymbolOfPath(std::string_view path);

// Loads one symbol's file into the series. Returns false, with barCount 0 and every other field
// untouched, when the file does not exist. A file that does not parse is a halvard::Error
// naming the file, the line and the problem; so are a file with no day line and one with more
// than 1001 day lines. A run over many files of one folder passes its listing (names), so a
// missing file does not list the folder again for its case-blind match.
bool LoadStockFile(PriceSeries& series, const std::string& path,
                   const platform::FolderNames* names = nullptr);

// The same parse of a price file's text held in memory, as if read from path: what a download
// checks before its answer may replace a file.
void LoadStockText(PriceSeries& series, std::string_view text, const std::string& path);

// The summaries of the barCount bars loaded (at least one): highestHigh, lowestLow, maxVolume,
// newestDate, oldestDate and averageVolume.
void ComputeSummaries(PriceSeries& series);

// averageVolume = the sum of the 139 oldest volumes (fewer when the file is shorter) over 138.
void ComputeAverageVolume(PriceSeries& series);

inline constexpr std::string_view kIndexFileName = "^IXIC.txt";
inline constexpr std::string_view kIndexMissingTitle = "Error";
inline constexpr std::string_view kIndexMissingMessage =
    "Unable to read ^IXIC.txt, Relative Strength Not Available";

// Loads the closes of the index file into indexClose and sets rsAvailable. Returns false when
// the file is missing: there is no RS line to show (runs::Session::LoadIndex turns it off) and
// the caller shows kIndexMissingMessage. A line that does not parse is a halvard::Error as for
// LoadStockFile.
bool LoadIndexFile(PriceSeries& series, const std::string& path);

// The same parse of an index file's text held in memory.
void LoadIndexText(PriceSeries& series, std::string_view text, const std::string& path);

}  // namespace halvard::data
