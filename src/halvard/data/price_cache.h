#pragma once
// Price files already parsed, kept so that a sweep, which backtests the same list once per level,
// reads each file once instead of once per level. A file whose size, modification time or
// identity changed is read again, so prices downloaded between two runs are seen. The threads of
// one run may load through it at once.

#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "halvard/data/price_series.h"
#include "halvard/data/series_copy.h"
#include "halvard/platform/folder_names.h"

namespace halvard::data {

class PriceCache {
 public:
  // Keeps at most maxBars bars in all (about 48 bytes each); past that, files load as usual.
  explicit PriceCache(size_t maxBars = 2'000'000) : maxBars_(maxBars) {}

  // LoadStockFile, with the same result, the same series afterwards (the bars past barCount
  // left as they were) and the same errors; names as for LoadStockFile.
  bool Load(PriceSeries& series, const std::string& path,
            const platform::FolderNames* names = nullptr);

  // The bars kept now, for a look at the cache's memory.
  size_t keptBars() const {
    const std::lock_guard lock(mutex_);
    return keptBars_;
  }

 private:
  struct Stamp {
    int64_t size = 0;
    int64_t modifiedNs = 0;
    uint64_t inode = 0;
    bool operator==(const Stamp&) const = default;
  };
  struct Entry {
    Stamp stamp;
    SeriesCopy series;
  };

  size_t maxBars_;
  mutable std::mutex mutex_;  // guards keptBars_ and entries_
  size_t keptBars_ = 0;
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace halvard::data
