#include "halvard/runs/history_span.h"

#include <algorithm>
#include <limits>

#include "halvard/data/file_parser.h"
#include "halvard/error.h"

namespace halvard::runs {
namespace {

// The values from day `from` on, moved to day 0; the slots left at the end are cleared.
template <class T, size_t N>
void ShiftNewer(const std::array<T, N>& from, int day, std::array<T, N>& to, T empty) {
  const auto first = from.begin() + std::min<size_t>(static_cast<size_t>(day), N);
  const auto end = std::copy(first, from.end(), to.begin());
  std::fill(end, to.end(), empty);
}

}  // namespace

std::vector<DaySpan> SplitHistory(int days, int parts) {
  if (parts < 1 || days / parts < kMinSpanDays) return {};
  const int length = days / parts;
  std::vector<DaySpan> spans;
  for (int f = 0; f < parts; ++f) {
    const int oldest = days - 1 - f * length;  // the span's oldest day
    const int count = f + 1 < parts ? length : oldest + 1;
    spans.push_back({oldest - count + 1, count});
  }
  return spans;
}

DaySpan JoinSpans(const std::vector<DaySpan>& spans, int first, int last) {
  const DaySpan& oldest = spans.at(static_cast<size_t>(first));
  const DaySpan& newest = spans.at(static_cast<size_t>(last));
  return {newest.newestDay, oldest.newestDay + oldest.days - newest.newestDay};
}

void CutToSpan(const engine::StockView& full, DaySpan span, engine::StockView& window) {
  const int day = span.newestDay;
  if (day < 0 || span.days < 1 || day + span.days > full.barCount) {
    throw Error(full.stockFilePath + ": a span of " + std::to_string(span.days) +
                " days ending on day " + std::to_string(day) + " lies outside its " +
                std::to_string(full.barCount) + " days");
  }
  window.stockFilePath = full.stockFilePath;
  window.stockSymbol = full.stockSymbol;
  window.barCount = full.barCount - day;
  ShiftNewer(full.barDate, day, window.barDate, 0.0);
  ShiftNewer(full.barOpen, day, window.barOpen, 0.0);
  ShiftNewer(full.barHigh, day, window.barHigh, 0.0);
  ShiftNewer(full.barLow, day, window.barLow, 0.0);
  ShiftNewer(full.barClose, day, window.barClose, 0.0);
  ShiftNewer(full.barVolume, day, window.barVolume, int64_t{0});
  data::ComputeSummaries(window);
  window.rsAvailable = full.rsAvailable;
  ShiftNewer(full.rsLine, day, window.rsLine, std::numeric_limits<double>::quiet_NaN());
  window.viewDays = span.days;
}

}  // namespace halvard::runs
