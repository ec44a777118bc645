#pragma once
// The figures of one stock that the local data gives: from its price file and from its row of
// the stock database. A figure that cannot be had is nullopt, and a criterion on it fails.
//
//   price          the newest close
//   averageVolume  the mean volume of the newest 63 trading days (about three months), or of
//                  every loaded day when the file is shorter. Not the loader's averageVolume,
//                  which sums the oldest days for the engine's unusual-volume test.
//   performance    100 × (newest close / close 252 trading days back − 1), percent; with fewer
//                  days loaded the oldest loaded close stands for it; one day gives none
//   eps            the stored EPS
//   epsGrowthThisYear  100 × (this year's estimate − EPS) / |EPS|, percent; none when EPS is 0
//   epsGrowthNextYear  100 × (next year's estimate − this year's) / |this year's|, percent
//   priceEarnings  newest close / EPS; none unless EPS is above 0
//   industry, exchange  the stored texts
// A stock without a row has none of the stored figures.

#include <optional>
#include <string>

#include "halvard/data/price_series.h"
#include "halvard/screener/stock_rows.h"

namespace halvard::screener {

inline constexpr int kAverageVolumeDays = 63;
inline constexpr int kYearDays = 252;

struct LocalReadings {
  std::optional<double> price;
  std::optional<double> averageVolume;
  std::optional<double> performance;
  std::optional<std::string> industry;
  std::optional<std::string> exchange;
  std::optional<double> eps;
  std::optional<double> epsGrowthThisYear;
  std::optional<double> epsGrowthNextYear;
  std::optional<double> priceEarnings;
};

// The readings of a loaded series (barCount above 0) and the stock's row (nullptr: none).
LocalReadings ReadLocally(const data::PriceSeries& series, const StockRow* row);

}  // namespace halvard::screener
