#pragma once
// The frame of every chart: the cleared canvas, the outlines of the two areas, the scales of
// the series and the grid with its price, volume and date labels.

#include <cstdint>
#include <string_view>

#include "halvard/chart/canvas.h"
#include "halvard/chart/chart.h"

namespace halvard::chart {

// Clears the canvas, outlines the price and volume areas, puts the view title followed by the
// symbol into chart.title, sets daysInView (the view's days plus 1), priceMin and priceMax
// (whole prices with a margin of at least 1 each way) and volumeMax (the largest volume plus a
// twentieth), and draws the grid. SetUpView and the slots of the view come first. A price beyond
// the range the scales hold (32,766) is a halvard::Error.
void DrawChart(Chart& chart, Canvas& canvas, int view, std::string_view symbol, double lowestLow,
               double highestHigh, int64_t maxVolume);

}  // namespace halvard::chart
