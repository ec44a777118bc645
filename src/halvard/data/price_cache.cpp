#include "halvard/data/price_cache.h"

#include <sys/stat.h>

#include "halvard/data/file_parser.h"

namespace halvard::data {

bool PriceCache::Load(PriceSeries& series, const std::string& path,
                      const platform::FolderNames* names) {
  struct stat st {};
  // A file found only through the case-blind fallback, or not at all, is never kept.
  if (::stat(path.c_str(), &st) != 0) return LoadStockFile(series, path, names);
  const Stamp stamp{static_cast<int64_t>(st.st_size),
                    static_cast<int64_t>(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec,
                    static_cast<uint64_t>(st.st_ino)};
  {
    const std::lock_guard lock(mutex_);
    if (const auto it = entries_.find(path); it != entries_.end()) {
      if (it->second.stamp == stamp) {
        it->second.series.Restore(path, series);
        return true;
      }
      keptBars_ -= static_cast<size_t>(it->second.series.barCount);
      entries_.erase(it);
    }
  }
  // Parsed outside the lock, so the threads of a run parse their files side by side.
  if (!LoadStockFile(series, path, names)) return false;
  const std::lock_guard lock(mutex_);
  if (keptBars_ + static_cast<size_t>(series.barCount) <= maxBars_ && !entries_.contains(path)) {
    Entry& entry = entries_[path];
    entry.stamp = stamp;
    entry.series.Keep(series, series.barCount);
    keptBars_ += static_cast<size_t>(series.barCount);
  }
  return true;
}

}  // namespace halvard::data
