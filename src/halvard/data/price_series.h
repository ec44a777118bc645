#pragma once
// The price series of the one loaded symbol, and the closes of the index file beside it.
// Index 0 is the newest day; day i + 1 is the day before day i. The arrays have fixed sizes and
// keep what they held before: loading a shorter file leaves the older symbol's bars past
// barCount, which some scans read on purpose.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace halvard::data {

// The closes of the index file, newest first: a fixed 31,001 of them, all 0 until written. They
// are held apart and only from the first write, because most series never get an index (the
// views a run's threads load their stocks into) and zeroing a quarter of a megabyte for each
// of them was a good part of what a short run touched. Reading through a const reference never
// allocates; the non-const operator[] is for writing and allocates the closes.
class IndexCloses {
 public:
  static constexpr size_t kSize = 31001;

  IndexCloses() = default;
  IndexCloses(const IndexCloses& other)
      : closes_(other.closes_ ? std::make_unique<Closes>(*other.closes_) : nullptr) {}
  IndexCloses& operator=(const IndexCloses& other) {
    if (this != &other) *this = IndexCloses(other);
    return *this;
  }
  IndexCloses(IndexCloses&&) = default;
  IndexCloses& operator=(IndexCloses&&) = default;

  double operator[](size_t day) const { return closes_ ? (*closes_)[day] : 0.0; }
  double& operator[](size_t day) {
    if (!closes_) closes_ = std::make_unique<Closes>();  // value-initialised: every close 0
    return (*closes_)[day];
  }

 private:
  using Closes = std::array<double, kSize>;

  std::unique_ptr<Closes> closes_;
};

struct PriceSeries {
  static constexpr int kMaxBars = 1001;
  static constexpr int kMaxIndexCloses = static_cast<int>(IndexCloses::kSize);

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

  IndexCloses indexClose;
  bool rsAvailable = false;
};

}  // namespace halvard::data
