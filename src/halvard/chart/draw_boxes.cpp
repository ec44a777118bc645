#include "halvard/chart/draw_boxes.h"

#include <algorithm>
#include <initializer_list>

namespace halvard::chart {
namespace {

// The box finders look one day further back than the bars drawn; such a day is pinned to the
// left edge rather than drawn in the margin.
double DayX(const Chart& chart, int day) {
  return std::max(chart.slotX(chart.slotOf(day)), chart.priceFrame.left);
}

void Outline(const Chart& chart, Canvas& canvas, int fromDay, int toDay, double high, double low,
             Colour colour) {
  canvas.rectangle(DayX(chart, fromDay), chart.priceY(high), DayX(chart, toDay), chart.priceY(low),
                   colour, false);
}

}  // namespace

void DrawBoxes(const Chart& chart, const engine::StockView& view, Canvas& canvas) {
  if (chart.daysInView == 0) return;  // nothing drawn yet: no scales
  // The finders look over the whole view even when fewer bars were loaded; a box or corvane
  // resting on a slot past them belongs to stale bars and is not drawn.
  const auto loaded = [&](std::initializer_list<int> days) {
    return std::all_of(days.begin(), days.end(), [&](int day) { return day < view.barCount; });
  };
  for (int k = 0; k < view.boxCount; ++k) {
    if (!loaded({view.boxTopDay[k], view.boxBottomDay[k], view.boxEndDay[k]})) continue;
    const int end = view.boxEndDay[k] == -1 ? 0 : view.boxEndDay[k];
    Outline(chart, canvas, view.boxTopDay[k], end, view.barHigh[view.boxTopDay[k]],
            view.barLow[view.boxBottomDay[k]], view.boxColor[k]);
  }
  for (int k = 0; k < view.corvaneCount; ++k) {
    if (view.corvaneLowDay[k] == -1) continue;
    if (!loaded({view.corvaneTopDay[k], view.corvaneLowDay[k], view.corvaneBreakDay[k]})) continue;
    Outline(chart, canvas, view.corvaneTopDay[k], view.corvaneBreakDay[k],
            view.barHigh[view.corvaneTopDay[k]], view.barLow[view.corvaneLowDay[k]],
            engine::StockView::kGreen);
  }
}

}  // namespace halvard::chart
