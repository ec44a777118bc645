#include "halvard/data/series_copy.h"

#include <algorithm>

namespace halvard::data {
namespace {

template <class T, size_t N>
void Take(const std::array<T, N>& bars, int count, std::vector<T>& column) {
  column.assign(bars.begin(), bars.begin() + count);
}

template <class T, size_t N>
void Put(const std::vector<T>& column, int count, std::array<T, N>& bars) {
  std::copy(column.begin(), column.begin() + count, bars.begin());
}

template <class T, size_t N>
bool SameFrom(const std::vector<T>& column, int from, const std::array<T, N>& bars) {
  return std::equal(column.begin() + from, column.end(), bars.begin() + from);
}

}  // namespace

void SeriesCopy::Keep(const PriceSeries& s, int bars) {
  const int n = std::clamp(std::max(bars, s.barCount), 0, PriceSeries::kMaxBars);
  symbol = s.stockSymbol;
  barCount = s.barCount;
  Take(s.barDate, n, date);
  Take(s.barOpen, n, open);
  Take(s.barHigh, n, high);
  Take(s.barLow, n, low);
  Take(s.barClose, n, close);
  Take(s.barVolume, n, volume);
  highestHigh = s.highestHigh;
  lowestLow = s.lowestLow;
  maxVolume = s.maxVolume;
  newestDate = s.newestDate;
  oldestDate = s.oldestDate;
  averageVolume = s.averageVolume;
}

void SeriesCopy::Restore(const std::string& path, PriceSeries& s) const {
  s.stockFilePath = path;
  s.stockSymbol = symbol;
  s.barCount = barCount;
  Put(date, barCount, s.barDate);
  Put(open, barCount, s.barOpen);
  Put(high, barCount, s.barHigh);
  Put(low, barCount, s.barLow);
  Put(close, barCount, s.barClose);
  Put(volume, barCount, s.barVolume);
  s.highestHigh = highestHigh;
  s.lowestLow = lowestLow;
  s.maxVolume = maxVolume;
  s.newestDate = newestDate;
  s.oldestDate = oldestDate;
  s.averageVolume = averageVolume;
}

bool SeriesCopy::SameBeyondLoaded(const PriceSeries& s) const {
  return SameFrom(date, barCount, s.barDate) && SameFrom(open, barCount, s.barOpen) &&
         SameFrom(high, barCount, s.barHigh) && SameFrom(low, barCount, s.barLow) &&
         SameFrom(close, barCount, s.barClose) && SameFrom(volume, barCount, s.barVolume);
}

}  // namespace halvard::data
