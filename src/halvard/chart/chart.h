#pragma once
// Chart: the state of the price and volume chart of the main window: where its two areas lie on
// the canvas, the scales of the view being drawn, the date labels and the colours. The steps
// that draw (UpdateView, DrawChart, DrawBoxes) set and read it; the scaling below turns prices,
// volumes and day slots into canvas units.

#include <array>
#include <cstdint>
#include <string>

#include "halvard/chart/canvas.h"

namespace halvard::chart {

struct Frame {
  double left = 0, top = 0, width = 0, height = 0;
  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

// A vertical stretch of the canvas that the vertical grid lines span.
struct Extent {
  double top = 0, bottom = 0;
};

struct ChartColours {
  Colour green = 0;    // volume bars
  Colour magenta = 0;  // the average-volume line
  Colour white = 0;    // area outlines, open and close ticks, labels
  Colour red = 0;
  Colour cyan = 0;    // daily range bars
  Colour yellow = 0;  // the RS line
  Colour grey = 0;    // grid lines
};

struct Chart {
  static constexpr int kDateLabelSlots = 11;

  Frame priceFrame;
  Frame volumeFrame;
  Extent fullExtent;   // both areas
  Extent priceExtent;  // the price area only

  // Set by the view set-up.
  int dayCount = 0;  // days of the current view
  int16_t tickWidth = 0;
  int dateLabelCount = 0;
  int dateLabelSpacing = 0;                             // bars between two date labels
  std::array<std::string, kDateLabelSlots> dateLabels;  // positions 1 .. count from the left

  // Set by UpdateView and DrawChart for the view being drawn.
  int daysInView = 0;  // dayCount + 1: one empty slot is left at the right edge
  int16_t priceMax = 0;
  int16_t priceMin = 0;
  int64_t volumeMax = 0;
  int16_t firstShown = 0;    // the oldest day drawn
  int16_t centreOffset = 0;  // empty slots before it when the series is shorter than the view

  ChartColours colours;
  bool chartOption = false;  // toggled by a key; nothing in the drawing reads it
  bool rangeBars = true;     // the main window turns both on at start-up
  bool openTicks = true;

  std::string title;   // the status bar's first panel: view title and symbol
  std::string status;  // "Last Day - ..." up to " Last Box : "

  // The slot of a day: 0 at the left edge, the oldest day shown after centreOffset empty slots.
  int slotOf(int day) const { return firstShown - day + centreOffset; }
  double slotX(double slot) const;
  double priceY(double price) const;    // priceMin at the bottom of the price area
  double volumeY(double volume) const;  // 0 at the bottom of the volume area
};

// At start-up: the vertical extents for a canvas of the given height, the colours, the option flag.
void InitChart(Chart& chart, double canvasHeight);

// After the canvas took a new size: the two areas and the extents inside it. The caller then
// shows the view again.
void LayOut(Chart& chart, double canvasWidth, double canvasHeight);

}  // namespace halvard::chart
