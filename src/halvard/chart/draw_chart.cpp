#include "halvard/chart/draw_chart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "halvard/engine/stock_view.h"
#include "halvard/error.h"
#include "halvard/platform/money_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::chart {
namespace {

constexpr double kGridLineWidth = 1;
constexpr int kPriceSteps = 4;
constexpr int kVolumeSteps = 3;

int16_t PriceBound(double value) {
  if (value > std::numeric_limits<int16_t>::max() || value < std::numeric_limits<int16_t>::min()) {
    throw Error("a price of " + platform::FormatGeneral(value) +
                " is beyond the chart's price scale (-32,767 to 32,766)");
  }
  return static_cast<int16_t>(value);
}

// A label sits on top of its line, inside the area: the topmost line gets its label below it.
double LabelTop(const Frame& frame, double lineY, double textHeight) {
  const double above = lineY - textHeight - 1;
  return above >= frame.top ? above : lineY + 1;
}

void DrawHorizontalGrid(const Chart& chart, Canvas& canvas) {
  const Colour grey = chart.colours.grey;
  const Colour white = chart.colours.white;
  const Frame& price = chart.priceFrame;
  for (int k = 0; k <= kPriceSteps; ++k) {
    const double value =
        chart.priceMin + static_cast<double>(chart.priceMax - chart.priceMin) * k / kPriceSteps;
    const double y = chart.priceY(value);
    canvas.line(price.left, y, price.right(), y, grey);
    canvas.text(price.left + 2, LabelTop(price, y, canvas.textHeight()),
                platform::FormatFixed(value, 2), white);
  }
  // Volume labels on the right, clear of the date labels that run along the bottom left.
  const Frame& volume = chart.volumeFrame;
  for (int k = 0; k <= kVolumeSteps; ++k) {
    const double value = static_cast<double>(chart.volumeMax) * k / kVolumeSteps;
    const double y = chart.volumeY(value);
    const std::string label = platform::FormatGeneral(value);
    canvas.line(volume.left, y, volume.right(), y, grey);
    canvas.text(volume.right() - canvas.textWidth(label) - 2,
                LabelTop(volume, y, canvas.textHeight()), label, white);
  }
}

// A vertical line at the slot of each labelled bar, across both areas; a bar just before the
// view (the spacings reach a few bars past it) gets the left edge. Its date runs along the bottom,
// right of the line, or left of it where it would leave the chart.
void DrawDateGrid(const Chart& chart, Canvas& canvas) {
  const Frame& area = chart.priceFrame;
  for (int position = 1; position <= chart.dateLabelCount; ++position) {
    const int day = (chart.dateLabelCount - position) * chart.dateLabelSpacing;
    const double x = std::clamp(chart.slotX(chart.slotOf(day)), area.left, area.right());
    canvas.line(x, chart.fullExtent.top, x, chart.fullExtent.bottom, chart.colours.grey);
    const std::string& label = chart.dateLabels[position];
    const double width = canvas.textWidth(label);
    const double left = x + 2 + width <= area.right() ? x + 2 : x - 2 - width;
    canvas.text(left, chart.fullExtent.bottom - canvas.textHeight() - 1, label,
                chart.colours.white);
  }
}

}  // namespace

void DrawChart(Chart& chart, Canvas& canvas, int view, std::string_view symbol, double lowestLow,
               double highestHigh, int64_t maxVolume) {
  canvas.clear();
  for (const Frame* frame : {&chart.priceFrame, &chart.volumeFrame}) {
    canvas.rectangle(frame->left, frame->top, frame->right(), frame->bottom(), chart.colours.white,
                     false);
  }
  chart.title = std::string(engine::ViewTitle(view)) + std::string(symbol);
  chart.daysInView = chart.dayCount + 1;
  // Whole prices, rounded as the platform rounds (half to even), so the grid lines fall on
  // round numbers.
  chart.priceMax = PriceBound(std::nearbyint(highestHigh) + 1);
  chart.priceMin = PriceBound(std::floor(lowestLow) - 1);
  chart.volumeMax = static_cast<int64_t>(std::nearbyint(static_cast<double>(maxVolume) * 1.05));

  LineWidthScope width(canvas, kGridLineWidth);
  DrawHorizontalGrid(chart, canvas);
  DrawDateGrid(chart, canvas);
}

}  // namespace halvard::chart
