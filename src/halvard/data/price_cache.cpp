#include "halvard/data/price_cache.h"

#include <sys/stat.h>

#include <algorithm>

#include "halvard/data/file_parser.h"

namespace halvard::data {
namespace {

template <class T, size_t N>
std::vector<T> Column(const std::array<T, N>& bars, int count) {
  return std::vector<T>(bars.begin(), bars.begin() + count);
}

template <class T, size_t N>
void Put(const std::vector<T>& column, std::array<T, N>& bars) {
  std::copy(column.begin(), column.end(), bars.begin());
}

}  // namespace

void PriceCache::Keep(const PriceSeries& s, Entry& e) {
  e.symbol = s.stockSymbol;
  e.date = Column(s.barDate, s.barCount);
  e.open = Column(s.barOpen, s.barCount);
  e.high = Column(s.barHigh, s.barCount);
  e.low = Column(s.barLow, s.barCount);
  e.close = Column(s.barClose, s.barCount);
  e.volume = Column(s.barVolume, s.barCount);
  e.highestHigh = s.highestHigh;
  e.lowestLow = s.lowestLow;
  e.maxVolume = s.maxVolume;
  e.newestDate = s.newestDate;
  e.oldestDate = s.oldestDate;
  e.averageVolume = s.averageVolume;
}

void PriceCache::Restore(const Entry& e, const std::string& path, PriceSeries& s) {
  s.stockFilePath = path;
  s.stockSymbol = e.symbol;
  s.barCount = static_cast<int>(e.date.size());
  Put(e.date, s.barDate);
  Put(e.open, s.barOpen);
  Put(e.high, s.barHigh);
  Put(e.low, s.barLow);
  Put(e.close, s.barClose);
  Put(e.volume, s.barVolume);
  s.highestHigh = e.highestHigh;
  s.lowestLow = e.lowestLow;
  s.maxVolume = e.maxVolume;
  s.newestDate = e.newestDate;
  s.oldestDate = e.oldestDate;
  s.averageVolume = e.averageVolume;
}

bool PriceCache::Load(PriceSeries& series, const std::string& path) {
  struct stat st {};
  // A file found only through the case-blind fallback, or not at all, is never kept.
  if (::stat(path.c_str(), &st) != 0) return LoadStockFile(series, path);
  const Stamp stamp{static_cast<int64_t>(st.st_size),
                    static_cast<int64_t>(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec,
                    static_cast<uint64_t>(st.st_ino)};
  if (const auto it = entries_.find(path); it != entries_.end()) {
    if (it->second.stamp == stamp) {
      Restore(it->second, path, series);
      return true;
    }
    keptBars_ -= it->second.date.size();
    entries_.erase(it);
  }
  if (!LoadStockFile(series, path)) return false;
  if (keptBars_ + static_cast<size_t>(series.barCount) <= maxBars_) {
    Entry& entry = entries_[path];
    entry.stamp = stamp;
    Keep(series, entry);
    keptBars_ += static_cast<size_t>(series.barCount);
  }
  return true;
}

}  // namespace halvard::data
