#pragma once
// The spans of days a walk-forward test cuts a symbol's history into, and the view of a run of
// consecutive spans as the engine sees it then: the series as it stood on the window's newest
// day, with nothing after that day loaded.

#include <vector>

#include "halvard/engine/stock_view.h"

namespace halvard::runs {

// Days counted back from the newest loaded day (0): newestDay and the days - 1 days before it.
struct DaySpan {
  int newestDay = 0;
  int days = 0;
};

// A span shorter than a month of trading days can rarely hold a box, a second box and the
// breakout a trade needs; folds of such spans would compare nothing.
inline constexpr int kMinSpanDays = 23;

// The newest `days` days cut into `parts` consecutive spans of equal length, oldest first; the
// days that do not divide evenly go to the newest span. Empty when a span would be shorter than
// kMinSpanDays.
std::vector<DaySpan> SplitHistory(int days, int parts);

// The spans first to last (oldest first, as SplitHistory gives them) as one window.
DaySpan JoinSpans(const std::vector<DaySpan>& spans, int first, int last);

// Puts into `window` the series of `full` as it stood on the span's newest day: the bars from
// that day on moved to day 0, the loader's summaries computed over them, the span's days as the
// view, and the RS line moved with the bars. The days before the span stay loaded, so the
// engine's look-backs (the low three days back, the RS comparison) read what they would have
// read on that day; the finders and the trades see only the span. An RS day the moved line no
// longer covers holds NaN, so a comparison reaching it fails, as one beyond the line does.
// Boxes are not computed.
void CutToSpan(const engine::StockView& full, DaySpan span, engine::StockView& window);

}  // namespace halvard::runs
