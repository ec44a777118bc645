#pragma once
// UpdateView: the one entry that draws the chart of the loaded series in the current view.

#include "halvard/chart/canvas.h"
#include "halvard/chart/chart.h"
#include "halvard/engine/stock_view.h"
#include "halvard/settings/config.h"

namespace halvard::chart {

// Draws the view config.currentView of the series from a cleared canvas: the frame and grid,
// each day's range bar, ticks and volume bar, the average-volume line and, with showRS, the RS
// line when it was computed for this series (rsLineOfSeries); a series shorter than the view is
// centred. Composes chart.status ("Last Day - " ... up to " Last Box : ", which the caller
// completes with the newest box). A view outside 1 to 5 only clears the canvas.
void UpdateView(Chart& chart, const engine::StockView& view, const settings::Config& config,
                Canvas& canvas, bool rsLineOfSeries = true);

// "Last Day - 11/7/2003: open,high,low,close,volume Last Box : " for the newest bar.
std::string LastDayText(const data::PriceSeries& series);

}  // namespace halvard::chart
