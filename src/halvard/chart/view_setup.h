#pragma once
// The set-up of a chart view: its day count, the width of its range bars and its date labels.

#include "halvard/chart/chart.h"
#include "halvard/data/price_series.h"

namespace halvard::chart {

// Sets the chart up for a view (1 five days, 2 one month, 3 three months, 4 six months, 5 one
// year). The date labels are the dates of the bars every dateLabelSpacing bars back from the
// newest, the newest at the right end; a position past the loaded bars has an empty label.
// Returns false, changing nothing, for a view outside 1 to 5.
bool SetUpView(Chart& chart, const data::PriceSeries& series, int view);

}  // namespace halvard::chart
