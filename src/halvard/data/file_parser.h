#pragma once
// The price-file loader. A price file is a header line followed by one line per trading day,
// newest first: date, open, high, low, close, volume (further fields ignored).

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "halvard/data/price_series.h"
#include "halvard/platform/files.h"

namespace halvard::settings {
class Config;
}

namespace halvard::data {

using platform::FileExists;

// The symbol a path names: cut before the last ".", then keep what follows the last "/" or "\"
// ("data/XYZ.txt" gives XYZ).
std::string GetSymbol(std::string_view path);

// Loads one symbol's file into the series. Returns false, with barCount 0 and every other field
// untouched, when the file does not exist. A file that does not parse is a halvard::Error
// naming the file, the line and the problem; so are a file with no day line and one with more
// than 1001 day lines.
bool LoadStockFile(PriceSeries& series, const std::string& path);

// The largest of the first count values and its index; on ties the newest day (lowest index).
template <class T>
T GetMax(std::span<const T> values, int count, int& index) {
  T best = values[0];
  index = 0;
  for (int i = 1; i < count; ++i) {
    if (values[i] > best) {
      best = values[i];
      index = i;
    }
  }
  return best;
}

template <class T>
T GetMin(std::span<const T> values, int count) {
  T best = values[0];
  for (int i = 1; i < count; ++i) {
    if (values[i] < best) best = values[i];
  }
  return best;
}

// averageVolume = the sum of the 139 oldest volumes (fewer when the file is shorter) over 138.
void ComputeAverageVolume(PriceSeries& series);

inline constexpr std::string_view kIndexFileName = "^IXIC.txt";
inline constexpr std::string_view kIndexMissingTitle = "Error";
inline constexpr std::string_view kIndexMissingMessage =
    "Unable to read ^IXIC.txt, Relative Strength Not Available";

// Loads the closes of the index file into indexClose and sets rsAvailable. When the file is
// missing it turns showRS off in the settings and returns false; the caller shows
// kIndexMissingMessage. A line that does not parse is a halvard::Error as for LoadStockFile.
bool LoadIndexFile(PriceSeries& series, const std::string& path, settings::Config& config);

}  // namespace halvard::data
