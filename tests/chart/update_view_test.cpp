#include "halvard/chart/update_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "halvard/chart/draw_boxes.h"
#include "halvard/chart/recording_canvas.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "test_support.h"

namespace halvard::chart {
namespace {

using Kind = Primitive::Kind;

constexpr Colour kCyan = Rgb(0, 255, 255);
constexpr Colour kGreen = Rgb(0, 255, 0);
constexpr Colour kWhite = Rgb(255, 255, 255);

// A canvas of 600 x 400: the price area is 5, 5, 590 wide, 269.5 high; the volume area starts
// at 279.5 and is 115.5 high.
constexpr double kLeft = 5, kWidth = 590;
constexpr double kPriceBottom = 5 + 269.5, kPriceHeight = 269.5;
constexpr double kVolumeBottom = 279.5 + 115.5, kVolumeHeight = 115.5;

struct Bar {
  double high, low;
  int64_t volume = 1000;
};

// A series of the given bars, oldest first, dated one day apart and ending on 1/31/2024.
std::unique_ptr<engine::StockView> SeriesOf(const std::vector<Bar>& oldestFirst) {
  auto v = std::make_unique<engine::StockView>();
  const int n = static_cast<int>(oldestFirst.size());
  const double newest = *platform::ParseDate("1/31/2024");
  v->barCount = n;
  v->highestHigh = 0;
  v->lowestLow = 1e9;
  for (int j = 0; j < n; ++j) {
    const int day = n - 1 - j;
    const Bar& b = oldestFirst[j];
    v->barDate[day] = newest - day;
    v->barHigh[day] = b.high;
    v->barLow[day] = b.low;
    v->barOpen[day] = v->barClose[day] = (b.high + b.low) / 2;
    v->barVolume[day] = b.volume;
    v->highestHigh = std::max(v->highestHigh, b.high);
    v->lowestLow = std::min(v->lowestLow, b.low);
    v->maxVolume = std::max(v->maxVolume, b.volume);
  }
  v->averageVolume = 500;
  v->stockSymbol = "TEST";
  return v;
}

struct Drawn {
  Chart chart;
  RecordingCanvas canvas;
};

std::unique_ptr<Drawn> Draw(const engine::StockView& v, int view, double height = 400) {
  auto d = std::make_unique<Drawn>();
  InitChart(d->chart, height);
  LayOut(d->chart, 600, height);
  settings::Config config;
  config.currentView = static_cast<int16_t>(view);
  UpdateView(d->chart, v, config, d->canvas);
  return d;
}

std::vector<Primitive> Only(const RecordingCanvas& canvas, Kind kind, Colour colour) {
  std::vector<Primitive> out;
  for (const Primitive& p : canvas.drawn()) {
    if (p.kind == kind && p.colour == colour) out.push_back(p);
  }
  return out;
}

double SlotX(double slot, int days) {
  return kLeft + slot / (days + 1) * (kWidth - 2);
}

TEST(UpdateView, ShortSeriesAreCentredInTheView) {
  // The missing days are split in two, halves rounded to even: 20 / 2, 19 / 2, 17 / 2.
  const struct {
    int bars;
    double offset;
  } cases[] = {{3, 10}, {4, 10}, {6, 8}};
  for (const auto& c : cases) {
    const auto v = SeriesOf(std::vector<Bar>(c.bars, {11, 10}));
    const auto d = Draw(*v, 2);
    const auto bars = Only(d->canvas, Kind::kLine, kCyan);
    ASSERT_EQ(bars.size(), static_cast<size_t>(c.bars)) << c.bars << " bars";
    EXPECT_DOUBLE_EQ(bars.front().x1, SlotX(c.offset, 23)) << c.bars << " bars: the oldest";
    EXPECT_DOUBLE_EQ(bars.back().x1, SlotX(c.offset + c.bars - 1, 23)) << c.bars << " bars";
    EXPECT_EQ(bars.front().lineWidth, 6);
  }
}

TEST(UpdateView, ScalesLeaveRoomAboveAndBelow) {
  // A flat series at 10 stands halfway between 9 and 11; the tallest volume reaches 1/1.05 of
  // the volume area, never its top.
  const auto v = SeriesOf({{10, 10, 400}, {10, 10, 2000}, {10, 10, 700}});
  const auto d = Draw(*v, 1);
  EXPECT_EQ(d->chart.priceMin, 9);
  EXPECT_EQ(d->chart.priceMax, 11);
  const Primitive bar = Only(d->canvas, Kind::kLine, kCyan).at(0);
  EXPECT_DOUBLE_EQ(bar.y1, kPriceBottom - 0.5 * (kPriceHeight - 2));
  EXPECT_DOUBLE_EQ(bar.y2, bar.y1);

  const auto volumes = Only(d->canvas, Kind::kLine, kGreen);
  ASSERT_EQ(volumes.size(), 3u);
  EXPECT_NEAR(volumes[1].y1 - volumes[1].y2, (kVolumeHeight - 2) / 1.05, 1e-9);
  EXPECT_NEAR(volumes[0].y1 - volumes[0].y2, (kVolumeHeight - 2) * 400 / 2100, 1e-9);
  EXPECT_DOUBLE_EQ(volumes[1].y1, kVolumeBottom);

  // The price grid: five lines from 9 to 11, labelled with two decimals.
  std::vector<std::string> labels;
  for (const Primitive& p : Only(d->canvas, Kind::kText, kWhite)) labels.push_back(p.text);
  for (const char* price : {"9.00", "9.50", "10.00", "10.50", "11.00"}) {
    EXPECT_NE(std::find(labels.begin(), labels.end(), price), labels.end()) << price;
  }
}

// Series the scales cannot hold (one that never went through the loader, or a price beyond
// the scale) stop the drawing with the file named, never with a wrapped-around scale.
TEST(UpdateView, PricesAndVolumesBeyondTheScalesNameTheFile) {
  const auto error = [](engine::StockView& v) {
    v.stockFilePath = "data/TEST.txt";
    return test::ErrorText([&] { Draw(v, 1); });
  };
  auto v = SeriesOf({{10, 10}, {40000, 10}});
  EXPECT_EQ(
      error(*v),
      "data/TEST.txt: a price of 40001 is beyond the chart's price scale (-32,767 to 32,766)");
  v = SeriesOf({{10, 10}, {11, 10}});
  v->highestHigh = std::nan("");
  EXPECT_EQ(error(*v),
            "data/TEST.txt: a price of nan is beyond the chart's price scale (-32,767 to 32,766)");
  v = SeriesOf({{10, 10, INT64_MAX}});
  EXPECT_EQ(error(*v),
            "data/TEST.txt: a volume of 9.68454063869752E+18 is beyond the chart's volume scale");
}

TEST(UpdateView, DateLabelsRunFromOldestOnTheLeftToNewestOnTheRight) {
  const auto v = SeriesOf(std::vector<Bar>(300, {11, 10}));
  const struct {
    int view;
    std::vector<std::string> dates;  // left to right
  } cases[] = {
      // Every 6 bars back from 1/31/2024 (one bar a calendar day here).
      {2, {"1/7/2024", "1/13/2024", "1/19/2024", "1/25/2024", "1/31/2024"}},
      // Every 46 bars; the one-year view has seven places. The newest date is moved left of
      // its line at the right edge, where the one before it would run into it: that one is
      // left out.
      {5, {"4/30/2023", "6/15/2023", "7/31/2023", "9/15/2023", "10/31/2023", "1/31/2024"}},
  };
  for (const auto& c : cases) {
    const auto d = Draw(*v, c.view);
    std::vector<std::string> texts;
    double right = -1;  // where the label to the left ends
    for (const Primitive& p : Only(d->canvas, Kind::kText, kWhite)) {
      if (p.text.find('/') == std::string::npos) continue;
      texts.push_back(p.text);
      EXPECT_GT(p.x1, right) << "view " << c.view << ": " << p.text;
      right = p.x1 + 6.0 * p.text.size();
    }
    EXPECT_EQ(texts, c.dates) << "view " << c.view;
  }
}

// In a low volume area the volume labels would touch: the highest is kept, and the zero line,
// on the row of the dates, has none.
TEST(UpdateView, VolumeLabelsNeverTouch) {
  const auto v = SeriesOf(std::vector<Bar>(30, {11, 10, 3000}));
  for (const double height : {400.0, 120.0}) {
    const auto d = Draw(*v, settings::Config().currentView, height);
    std::vector<double> tops;
    for (const Primitive& p : Only(d->canvas, Kind::kText, kWhite)) {
      if (p.x1 < 300 || p.text.find('/') != std::string::npos) continue;  // the right-hand labels
      if (p.y1 < d->chart.volumeFrame.top - 10) continue;                 // of the volume area
      EXPECT_NE(p.text, "0");
      tops.push_back(p.y1);
    }
    ASSERT_FALSE(tops.empty()) << height;
    EXPECT_LT(*std::min_element(tops.begin(), tops.end()), d->chart.volumeFrame.top + 10)
        << "the highest kept";
    std::sort(tops.begin(), tops.end());
    for (size_t i = 1; i < tops.size(); ++i) EXPECT_GE(tops[i] - tops[i - 1], 10 + 4) << height;
  }
}

TEST(UpdateView, AViewOutsideOneToFiveLeavesTheCanvasCleared) {
  const auto v = SeriesOf(std::vector<Bar>(30, {11, 10}));
  for (const int view : {0, 6, -1}) {
    const auto d = Draw(*v, view);
    EXPECT_EQ(d->canvas.clears(), 1) << view;
    EXPECT_TRUE(d->canvas.drawn().empty()) << view;
  }
}

TEST(DrawBoxes, RedWhenBrokenUpOrOpenYellowWhenBrokenDown) {
  // Box A breaks down on p6, box B breaks up on p12, box C (top p13, bottom p14) stays open.
  const auto v = SeriesOf({{10, 9},  {12, 10},  {11, 8},  {11, 8.5}, {11, 9},  {11, 9}, {11, 7},
                           {13, 8},  {12, 7.5}, {12, 8},  {12, 8},   {12, 8},  {14, 9}, {16, 12},
                           {15, 11}, {15, 12},  {15, 12}, {15, 12},  {15, 12}, {15, 12}});
  engine::SetViewDays(*v, 23);
  engine::ComputeBoxes(*v, true);
  const auto d = Draw(*v, 2);
  const size_t before = d->canvas.drawn().size();
  DrawBoxes(d->chart, *v, d->canvas);

  std::vector<Primitive> boxes(d->canvas.drawn().begin() + before, d->canvas.drawn().end());
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_EQ(boxes[0].colour, engine::StockView::kYellow);
  EXPECT_EQ(boxes[1].colour, engine::StockView::kRed);
  EXPECT_EQ(boxes[2].colour, engine::StockView::kRed);
  for (const Primitive& box : boxes) EXPECT_EQ(box.kind, Kind::kRectangle);
  // The open box reaches the newest day; 20 bars in 23 days leave 2 empty slots first.
  EXPECT_DOUBLE_EQ(boxes[2].x1, SlotX(2 + 13, 23));
  EXPECT_DOUBLE_EQ(boxes[2].x2, SlotX(2 + 19, 23));
  EXPECT_DOUBLE_EQ(boxes[2].y1, kPriceBottom - (16.0 - 6) / (17 - 6) * (kPriceHeight - 2));
  EXPECT_EQ(v->lastBoxText, "16,11");
}

}  // namespace
}  // namespace halvard::chart
