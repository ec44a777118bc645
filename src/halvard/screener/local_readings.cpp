#include "halvard/screener/local_readings.h"

#include <algorithm>
#include <cmath>

namespace halvard::screener {
namespace {

// The rise from base to value as a percentage of the base's size, so a loss that shrinks
// (-2 to -1) counts as growth; none from a base of 0.
std::optional<double> Growth(std::optional<double> base, std::optional<double> value) {
  if (!base || !value || *base == 0) return std::nullopt;
  return (*value - *base) / std::fabs(*base) * 100;
}

}  // namespace

LocalReadings ReadLocally(const data::PriceSeries& s, const StockRow* row) {
  LocalReadings r;
  const double newest = s.barClose[0];
  r.price = newest;

  const int volumeDays = std::min(s.barCount, kAverageVolumeDays);
  double volumes = 0;
  for (int i = 0; i < volumeDays; ++i) volumes += static_cast<double>(s.barVolume[i]);
  r.averageVolume = volumes / volumeDays;

  const int back = std::min(s.barCount - 1, kYearDays);
  if (back > 0 && s.barClose[back] > 0) r.performance = (newest / s.barClose[back] - 1) * 100;

  if (row == nullptr) return r;
  r.industry = row->industry;
  r.exchange = row->exchange;
  r.eps = row->eps;
  r.epsGrowthThisYear = Growth(row->eps, row->yearEstimate);
  r.epsGrowthNextYear = Growth(row->yearEstimate, row->nextYearEstimate);
  if (row->eps && *row->eps > 0) r.priceEarnings = newest / *row->eps;
  return r;
}

}  // namespace halvard::screener
