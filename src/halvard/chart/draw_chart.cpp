#include "halvard/chart/draw_chart.h"

#include <algorithm>
#include <array>
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
constexpr double kLabelGap = 4;  // the least room between two labels

int16_t PriceBound(double value) {
  // Written so that NaN fails too.
  if (!(value <= std::numeric_limits<int16_t>::max() &&
        value >= std::numeric_limits<int16_t>::min())) {
    throw Error("a price of " + platform::FormatGeneral(value) +
                " is beyond the chart's price scale (-32,767 to 32,766)");
  }
  return static_cast<int16_t>(value);
}

int64_t VolumeBound(double value) {
  // 2^62: the scale's labels and lines still have room above it.
  if (!(value >= 0 && value <= 4611686018427387904.0)) {
    throw Error("a volume of " + platform::FormatGeneral(value) +
                " is beyond the chart's volume scale");
  }
  return static_cast<int64_t>(std::nearbyint(value));
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
  // Volume labels on the right. The zero line is the area's bottom, the row of the dates: it
  // has no label. In a low volume area a label that would touch the one above it is left out,
  // the highest kept.
  const Frame& volume = chart.volumeFrame;
  std::array<bool, kVolumeSteps + 1> labelled{};
  double above = -std::numeric_limits<double>::infinity();  // bottom of the label above
  for (int k = kVolumeSteps; k >= 1; --k) {
    const double top =
        LabelTop(volume, chart.volumeY(static_cast<double>(chart.volumeMax) * k / kVolumeSteps),
                 canvas.textHeight());
    labelled[k] = top >= above + kLabelGap;
    if (labelled[k]) above = top + canvas.textHeight();
  }
  for (int k = 0; k <= kVolumeSteps; ++k) {
    const double value = static_cast<double>(chart.volumeMax) * k / kVolumeSteps;
    const double y = chart.volumeY(value);
    const std::string label = platform::FormatGeneral(value);
    canvas.line(volume.left, y, volume.right(), y, grey);
    if (!labelled[k]) continue;
    canvas.text(volume.right() - canvas.textWidth(label) - 2,
                LabelTop(volume, y, canvas.textHeight()), label, white);
  }
}

// A vertical line at the slot of each labelled bar, across both areas; a bar just before the
// view (the spacings reach a few bars past it) gets the left edge. Its date runs along the bottom,
// right of the line, or left of it where it would leave the chart.
void DrawDateGrid(const Chart& chart, Canvas& canvas) {
  const Frame& area = chart.priceFrame;
  const auto lineX = [&](int position) {
    const int day = (chart.dateLabelCount - position) * chart.dateLabelSpacing;
    return std::clamp(chart.slotX(chart.slotOf(day)), area.left, area.right());
  };
  const auto labelLeft = [&](int position) {
    const double x = lineX(position);
    const double width = canvas.textWidth(chart.dateLabels[position]);
    return x + 2 + width <= area.right() ? x + 2 : x - 2 - width;
  };
  // The newest date always shows; an older one that would run into the date to its right (the
  // newest is moved left of its line at the right edge) is left out.
  std::array<bool, Chart::kDateLabelSlots> labelled{};
  double right = std::numeric_limits<double>::infinity();  // left end of the label to the right
  for (int position = chart.dateLabelCount; position >= 1; --position) {
    const std::string& label = chart.dateLabels[position];
    if (label.empty()) continue;  // no bar of this symbol there
    const double left = labelLeft(position);
    labelled[position] = left + canvas.textWidth(label) + kLabelGap <= right;
    if (labelled[position]) right = left;
  }
  for (int position = 1; position <= chart.dateLabelCount; ++position) {
    const std::string& label = chart.dateLabels[position];
    if (label.empty()) continue;
    const double x = lineX(position);
    canvas.line(x, chart.fullExtent.top, x, chart.fullExtent.bottom, chart.colours.grey);
    if (!labelled[position]) continue;
    canvas.text(labelLeft(position), chart.fullExtent.bottom - canvas.textHeight() - 1, label,
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
  chart.volumeMax = VolumeBound(static_cast<double>(maxVolume) * 1.05);

  LineWidthScope width(canvas, kGridLineWidth);
  DrawHorizontalGrid(chart, canvas);
  DrawDateGrid(chart, canvas);
}

}  // namespace halvard::chart
