#include "halvard/chart/view_setup.h"

#include "halvard/engine/stock_view.h"
#include "halvard/platform/date_text.h"

namespace halvard::chart {
namespace {

struct ViewLayout {
  int dateLabels;
  int spacing;  // bars between two date labels
  int16_t tickWidth;
};

// Spacings that spread the labels over the whole view; the one-year view has room for seven.
constexpr ViewLayout kLayouts[] = {
    {5, 1, 6}, {5, 6, 6}, {5, 18, 4}, {5, 35, 4}, {7, 46, 6},
};

}  // namespace

bool SetUpView(Chart& chart, const data::PriceSeries& series, int view) {
  const int days = engine::ViewDayCount(view);
  if (days == 0) return false;
  const ViewLayout& layout = kLayouts[view - 1];
  chart.dayCount = days;
  chart.tickWidth = layout.tickWidth;
  chart.dateLabelCount = layout.dateLabels;
  chart.dateLabelSpacing = layout.spacing;
  for (int k = 0; k < layout.dateLabels; ++k) {
    // A slot past the loaded bars has no date of this symbol: it gets no label.
    const int day = k * layout.spacing;
    chart.dateLabels[layout.dateLabels - k] =
        day < series.barCount ? platform::FormatShortDate(series.barDate[day]) : std::string();
  }
  return true;
}

}  // namespace halvard::chart
