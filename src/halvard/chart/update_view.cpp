#include "halvard/chart/update_view.h"

#include <cmath>

#include "halvard/chart/day_marks.h"
#include "halvard/chart/draw_chart.h"
#include "halvard/chart/view_setup.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::chart {
namespace {

// The oldest day drawn, and the empty slots before it that centre a series shorter than the view.
void PlaceSlots(Chart& chart, int barCount) {
  const int days = chart.dayCount;
  if (days > barCount) {
    // Half the missing days, rounded half to even as the platform converts.
    chart.centreOffset = static_cast<int16_t>(std::nearbyint((days - barCount) / 2.0));
    chart.firstShown = static_cast<int16_t>(barCount - 1);
  } else {
    chart.centreOffset = 0;
    chart.firstShown = static_cast<int16_t>(days - 1);
  }
}

void DrawDays(const Chart& chart, Canvas& canvas, const data::PriceSeries& series) {
  for (int day = chart.firstShown; day >= 0; --day) {
    const int slot = chart.slotOf(day);
    if (chart.rangeBars) DrawRangeBar(chart, canvas, slot, series.barLow[day], series.barHigh[day]);
    DrawTick(chart, canvas, slot, series.barClose[day], TickSide::kClose);
    if (chart.openTicks) DrawTick(chart, canvas, slot, series.barOpen[day], TickSide::kOpen);
    DrawVolumeBar(chart, canvas, slot, series.barVolume[day]);
  }
}

}  // namespace

std::string LastDayText(const data::PriceSeries& series) {
  using platform::FormatGeneral;
  return "Last Day - " + platform::FormatShortDate(series.barDate[0]) + ": " +
         FormatGeneral(series.barOpen[0]) + "," + FormatGeneral(series.barHigh[0]) + "," +
         FormatGeneral(series.barLow[0]) + "," + FormatGeneral(series.barClose[0]) + "," +
         std::to_string(series.barVolume[0]) + " Last Box : ";
}

void UpdateView(Chart& chart, const engine::StockView& view, const settings::Config& config,
                Canvas& canvas, bool rsLineOfSeries) {
  canvas.clear();
  if (!SetUpView(chart, view, config.currentView)) return;
  PlaceSlots(chart, view.barCount);
  chart.status = LastDayText(view);
  try {
    DrawChart(chart, canvas, config.currentView, view.stockSymbol, view.lowestLow, view.highestHigh,
              view.maxVolume);
  } catch (const Error& e) {
    throw Error(view.stockFilePath + ": " + e.what());  // the scales name no file of their own
  }
  DrawDays(chart, canvas, view);
  DrawAverageVolume(chart, canvas, view.averageVolume);
  if (config.showRS && rsLineOfSeries) DrawRSLine(chart, canvas, view);
}

}  // namespace halvard::chart
