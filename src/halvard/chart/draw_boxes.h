#pragma once
// The boxes and corvanes over the price area, each as an outlined rectangle in its colour.

#include "halvard/chart/canvas.h"
#include "halvard/chart/chart.h"
#include "halvard/engine/stock_view.h"

namespace halvard::chart {

// Draws what ComputeBoxes(view, true) left: each box from its top day to its end day (an open
// box to the newest day), between its top and bottom, in boxColor; each corvane from its high
// to the day of the new high, between that high and the base low, in green. Call it after
// UpdateView, which sets the scales.
void DrawBoxes(const Chart& chart, const engine::StockView& view, Canvas& canvas);

}  // namespace halvard::chart
