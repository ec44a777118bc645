#pragma once
// What the chart draws for each day, at the day's slot, and the two lines across the whole view.

#include <cstdint>

#include "halvard/chart/canvas.h"
#include "halvard/chart/chart.h"
#include "halvard/engine/stock_view.h"

namespace halvard::chart {

enum class TickSide { kOpen = 1, kClose = 2 };

// A green line up from the floor of the volume area.
void DrawVolumeBar(const Chart& chart, Canvas& canvas, int slot, int64_t volume);
// A cyan line from the low to the high, as wide as the view's tickWidth.
void DrawRangeBar(const Chart& chart, Canvas& canvas, int slot, double low, double high);
// A short white tick at the price: the open to the left of the range bar, the close to the right.
void DrawTick(const Chart& chart, Canvas& canvas, int slot, double price, TickSide side);

// Across the volume area at the series' average volume; only when there is a volume scale.
void DrawAverageVolume(const Chart& chart, Canvas& canvas, double averageVolume);
// The RS line of the days shown, in yellow, on its own scale over the price area (rsMin at the
// bottom, rsMax at the top).
void DrawRSLine(const Chart& chart, Canvas& canvas, const engine::StockView& view);

}  // namespace halvard::chart
