#pragma once
// The price series of the one loaded symbol, and the closes of the index file beside it.
// Index 0 is the newest day; day i + 1 is the day before day i. The arrays have fixed sizes and
// keep what they held before: loading a shorter file leaves the older symbol's bars past
// barCount, which some scans read on purpose.

#include <array>
#include <cstdint>
#include <string>

namespace halvard::data {

struct PriceSeries {
  static constexpr int kMaxBars = 1001;
  static constexpr int kMaxIndexCloses = 31001;

  std::string stockFilePath;  // the path last given to the loader, even when missing
  std::string stockSymbol;    // SymbolOfPath(stockFilePath)
  int barCount = 0;

  std::array<double, kMaxBars> barDate{};  // days from 12/30/1899
  std::array<double, kMaxBars> barOpen{};
  std::array<double, kMaxBars> barHigh{};
  std::array<double, kMaxBars> barLow{};
  std::array<double, kMaxBars> barClose{};
  std::array<int64_t, kMaxBars> barVolume{};  // 64-bit: index volumes pass 2^31

  double highestHigh = 0;
  double lowestLow = 0;
  int64_t maxVolume = 0;
  double newestDate = 0;
  double oldestDate = 0;
  double averageVolume = 0;

  std::array<double, kMaxIndexCloses> indexClose{};
  bool rsAvailable = false;
};

}  // namespace halvard::data
