#pragma once
// SeriesCopy: the bars of a loaded series and its summaries, kept apart from the series. What a
// cache of parsed files keeps, and what a thread of a list run hands over of a stock it loaded.

#include <cstdint>
#include <string>
#include <vector>

#include "halvard/data/price_series.h"

namespace halvard::data {

struct SeriesCopy {
  std::string symbol;
  int barCount = 0;
  std::vector<double> date, open, high, low, close;
  std::vector<int64_t> volume;
  double highestHigh = 0;
  double lowestLow = 0;
  int64_t maxVolume = 0;
  double newestDate = 0;
  double oldestDate = 0;
  double averageVolume = 0;

  // Keeps the symbol, barCount, the summaries and the first `bars` bars (at least barCount; more
  // keeps what the arrays hold past the loaded days too).
  void Keep(const PriceSeries& series, int bars);
  // What loading the file at path left in the series: path, symbol, barCount, the loaded bars and
  // the summaries. The bars past barCount stay as they were.
  void Restore(const std::string& path, PriceSeries& series) const;
  // Whether the series holds, past barCount, the bars kept past barCount.
  bool SameBeyondLoaded(const PriceSeries& series) const;
};

}  // namespace halvard::data
