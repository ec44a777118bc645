#pragma once
// StockView: the one loaded symbol with what is computed on it: the view length, the boxes, the
// corvanes and the relative-strength line. The arrays have the fixed sizes the strategy was
// built around; going past one is a halvard::Error naming the limit and the file.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvard/data/price_series.h"

namespace halvard::engine {

struct StockView : data::PriceSeries {
  static constexpr int kMaxBoxes = 366;
  static constexpr int kMaxDrawnBoxes = 101;  // boxes that have a colour
  static constexpr int kMaxCorvanes = 101;
  static constexpr int kRsValues = 366;

  static constexpr uint32_t kRed = 255;  // 0x00BBGGRR
  static constexpr uint32_t kYellow = 65535;
  static constexpr uint32_t kGreen = 65280;

  int viewDays = 0;  // days the finders look at, counted back from the newest day

  int boxCount = 0;  // the still-open newest box included
  std::array<int16_t, kMaxBoxes> boxTopDay{};
  std::array<int16_t, kMaxBoxes> boxBottomDay{};
  std::array<int16_t, kMaxBoxes> boxEndDay{};   // -1 while open
  std::array<int16_t, kMaxBoxes> boxBrokeUp{};  // 1 broke up, 0 broke down
  std::array<uint32_t, kMaxDrawnBoxes> boxColor{};
  std::string lastBoxText;  // "top,bottom" of the newest box, set when boxes are drawn

  int corvaneCount = 0;
  std::array<int16_t, kMaxCorvanes> corvaneTopDay{};
  std::array<int16_t, kMaxCorvanes> corvaneLowDay{};
  std::array<int16_t, kMaxCorvanes> corvaneBreakDay{};

  std::array<double, kRsValues> rsLine{};  // close / index close, index 0 = newest day
  double rsMin = 10000;                    // the RS scale of the chart, with 10 % head-room
  double rsMax = 0;
};

// The days of the five chart views (1 = five days ... 5 = one year); 0 for any other view.
int ViewDayCount(int view);
// The status title of a view ("Six Month View - "); empty for a view outside 1 to 5.
std::string_view ViewTitle(int view);

void SetViewDays(StockView& v, int n);  // viewDays = n + 1

// Cuts the view into boxes: a top (a high above the three newer highs), then a bottom (a low
// below the three newer lows), then the day price leaves the range.
void FindBoxes(StockView& v);

// Finds long bases: a new high at least 42 days after the previous new high.
void FindCorvanes(StockView& v);

// FindBoxes and FindCorvanes; with draw also the box colours, the open box marked as broken up,
// and lastBoxText (skipped when there is no box).
void ComputeBoxes(StockView& v, bool draw);

// Fills rsLine (at most 366 values) when the index is loaded and bars are loaded.
void ComputeRSLine(StockView& v);

// The mean relative strength over every loaded day (avg) and over the newest N - 69 of them
// (prevAvg), in the RS line's terms: a day without an index close repeats the day before. Both
// 0 without the index file; prevAvg 0 with 69 days or fewer. Unlike the line, the averages
// count every loaded day, also past the line's 366. A newest day without an index close is a
// halvard::Error naming the file.
void ComputeRSAverages(const StockView& v, double& avg, double& prevAvg);

}  // namespace halvard::engine
