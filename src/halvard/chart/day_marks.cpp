#include "halvard/chart/day_marks.h"

namespace halvard::chart {

void DrawVolumeBar(const Chart& chart, Canvas& canvas, int slot, int64_t volume) {
  const double x = chart.slotX(slot);
  canvas.line(x, chart.volumeFrame.bottom(), x, chart.volumeY(static_cast<double>(volume)),
              chart.colours.green);
}

void DrawRangeBar(const Chart& chart, Canvas& canvas, int slot, double low, double high) {
  const double x = chart.slotX(slot);
  LineWidthScope width(canvas, chart.tickWidth);
  canvas.line(x, chart.priceY(low), x, chart.priceY(high), chart.colours.cyan);
}

void DrawTick(const Chart& chart, Canvas& canvas, int slot, double price, TickSide side) {
  // As long as the range bar is wide, so half of it shows beside the bar.
  const double x = chart.slotX(slot);
  const double y = chart.priceY(price);
  const double end = side == TickSide::kOpen ? x - chart.tickWidth : x + chart.tickWidth;
  canvas.line(x, y, end, y, chart.colours.white);
}

void DrawAverageVolume(const Chart& chart, Canvas& canvas, double averageVolume) {
  if (chart.volumeMax <= 0) return;
  const double y = chart.volumeY(averageVolume);
  canvas.line(chart.volumeFrame.left, y, chart.volumeFrame.right(), y, chart.colours.magenta);
}

void DrawRSLine(const Chart& chart, Canvas& canvas, const engine::StockView& view) {
  // A line of equal values has no scale (it never happens with head-room unless every value
  // is 0): nothing to draw.
  if (view.rsMax <= view.rsMin) return;
  const Frame& area = chart.priceFrame;
  const auto y = [&](int day) {
    return area.bottom() -
           (view.rsLine[day] - view.rsMin) / (view.rsMax - view.rsMin) * (area.height - 2);
  };
  for (int day = chart.firstShown; day >= 1; --day) {
    canvas.line(chart.slotX(chart.slotOf(day)), y(day), chart.slotX(chart.slotOf(day - 1)),
                y(day - 1), chart.colours.yellow);
  }
}

}  // namespace halvard::chart
