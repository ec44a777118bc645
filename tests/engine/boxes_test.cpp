#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "halvard/data/file_parser.h"
#include "halvard/engine/stock_view.h"
#include "halvard/error.h"
#include "test_support.h"

namespace halvard::engine {
namespace {

// A view over the given highs and lows, written oldest first (as one reads a chart, left to
// right); the finders see them newest first. The view covers every bar.
std::unique_ptr<StockView> ViewOf(const std::vector<double>& highs,
                                  const std::vector<double>& lows) {
  auto v = std::make_unique<StockView>();
  const int n = static_cast<int>(highs.size());
  for (int j = 0; j < n; ++j) {
    v->barHigh[n - 1 - j] = highs[j];
    v->barLow[n - 1 - j] = lows.at(j);
  }
  v->barCount = n;
  v->stockFilePath = "TEST.txt";
  SetViewDays(*v, n - 1);
  return v;
}

// A day as its position counted from the oldest bar of the view, or a position as its day, for
// readable expectations; -1 stays.
int Pos(const StockView& v, int day) {
  return day == -1 ? -1 : v.viewDays - 1 - day;
}

// {top, bottom, end, brokeUp}, the days as positions.
using Box = std::array<int, 4>;

std::vector<Box> BoxesOf(const StockView& v) {
  std::vector<Box> boxes;
  for (int k = 0; k < v.boxCount; ++k) {
    boxes.push_back({Pos(v, v.boxTopDay[k]), Pos(v, v.boxBottomDay[k]), Pos(v, v.boxEndDay[k]),
                     v.boxBrokeUp[k]});
  }
  return boxes;
}

TEST(Boxes, HandMadeCharts) {
  const struct {
    const char* what;
    std::vector<double> highs, lows;  // oldest first
    std::vector<Box> boxes;
  } cases[] = {
      {"a top at 1, a bottom at 2, a break up at 6; the high at 6 has only two newer days",
       {10, 12, 11, 11, 11.5, 11, 12.5, 12.4, 12.3},
       {9, 10, 8, 8.5, 9, 9, 9, 9, 9},
       {{1, 2, 6, 1}}},
      {"the lowest low, at 5, has only two newer days: no bottom",
       {10, 12, 11, 11, 11, 11, 11, 11},
       {9, 10, 9, 9, 9, 8, 8.5, 9},
       {}},
      {"the newest box stays open, brokeUp untouched",
       {10, 12, 11, 11, 11.5, 11, 11.9},
       {9, 10, 8, 8.5, 9, 9, 8.1},
       {{1, 2, -1, 0}}},
      {"a break both ways (6) counts as down; its high, the highest of all, is no top: the next "
       "top search starts after the break day",
       {10, 12, 11, 11, 11.5, 11, 20, 19, 18, 17, 16, 16, 16, 16, 16},
       {9, 10, 8, 8.5, 9, 9, 7, 9, 9, 9, 9, 8, 8.5, 9, 9},
       {{1, 2, 6, 0}, {7, 11, -1, 0}}},
      {"of two equal highs side by side only the newer is a top",
       {10, 12, 12, 11, 11, 11.5, 11, 13, 13},
       {9, 10, 10, 8, 8.5, 9, 9, 11, 11},
       {{2, 3, 7, 1}}},
      {"an equal low three days later keeps a low from being a bottom",
       {10, 12, 11, 11, 11.5, 11, 11, 11, 11},
       {9, 10, 8, 8.5, 9, 8, 9, 9, 9},
       {{1, 5, -1, 0}}},
      {"a rise above the top (5) before the bottom neither ends nor moves the box",
       {10, 12, 11, 11, 11, 13, 11, 11, 11.5, 11, 11},
       {9, 10, 9.5, 9.4, 9.3, 9.8, 8, 8.5, 9, 9, 7},
       {{1, 6, 10, 0}}},
  };
  for (const auto& c : cases) {
    const auto v = ViewOf(c.highs, c.lows);
    FindBoxes(*v);
    EXPECT_EQ(BoxesOf(*v), c.boxes) << c.what;
  }
}

TEST(Boxes, EveryBoxOfARealHistoryHoldsItsDefinition) {
  auto v = std::make_unique<StockView>();
  ASSERT_TRUE(data::LoadStockFile(*v, (test::LongPrices() / "AMD.txt").string()));
  SetViewDays(*v, 700);
  FindBoxes(*v);
  ASSERT_GT(v->boxCount, 20);
  const auto &h = v->barHigh, &l = v->barLow;
  for (int k = 0; k < v->boxCount; ++k) {
    const int t = v->boxTopDay[k], b = v->boxBottomDay[k], e = v->boxEndDay[k];
    SCOPED_TRACE("box " + std::to_string(k));
    EXPECT_LT(t, k == 0 ? v->viewDays : v->boxEndDay[k - 1]);  // after the previous box ended
    EXPECT_TRUE(h[t] > h[t - 1] && h[t] > h[t - 2] && h[t] > h[t - 3]);
    EXPECT_LT(b, t);
    EXPECT_TRUE(l[b] < l[b - 1] && l[b] < l[b - 2] && l[b] < l[b - 3]);
    for (int i = b - 1; i > e; --i) EXPECT_TRUE(h[i] <= h[t] && l[i] >= l[b]) << i;
    if (e == -1) {
      EXPECT_EQ(k, v->boxCount - 1);  // only the newest box may be open
    } else {
      EXPECT_TRUE(h[e] > h[t] || l[e] < l[b]);
      EXPECT_EQ(v->boxBrokeUp[k], l[e] < l[b] ? 0 : 1);
    }
  }
}

TEST(Boxes, DrawingColoursTheBoxesAndOpensTheNewest) {
  // Three boxes: one broken down (at 6), one broken up (at 13), one still open.
  auto v = ViewOf({10, 12, 11, 11, 11.5, 11, 11, 10, 11, 10, 10, 10, 10, 12, 11, 10, 10, 9, 9, 9},
                  {9, 10, 8, 8.5, 9, 9, 7, 6, 7, 5, 5.5, 6, 6, 7, 8, 7, 7.5, 7.2, 7.1, 7.3});
  ComputeBoxes(*v, false);
  ASSERT_EQ(v->boxCount, 3);
  EXPECT_EQ(v->boxBrokeUp[2], 0);  // as it was: only drawing marks the open box
  EXPECT_EQ(v->lastBoxText, "");   // only drawing sets it
  ComputeBoxes(*v, true);
  EXPECT_EQ((std::vector<uint32_t>(v->boxColor.begin(), v->boxColor.begin() + 3)),
            (std::vector<uint32_t>{StockView::kYellow, StockView::kRed, StockView::kRed}));
  EXPECT_EQ(v->boxBrokeUp[2], 1);
  EXPECT_EQ(v->lastBoxText, "11,7");
  // With no box at all the text stays what it was.
  auto flat = ViewOf(std::vector<double>(10, 10), std::vector<double>(10, 9));
  flat->lastBoxText = "5,4";
  ComputeBoxes(*flat, true);
  EXPECT_EQ(flat->lastBoxText, "5,4");
}

TEST(Boxes, TheLimitsOfTheArraysAreErrorsNamingTheFile) {
  // A box every six days over 1001 days: about 166 boxes, more than can be drawn.
  std::vector<double> highs, lows;
  for (int i = 0; i < 1001; ++i) {
    highs.push_back(std::array{10.0, 12.0, 11.0, 11.0, 11.5, 13.0}[i % 6]);
    lows.push_back(std::array{9.0, 10.0, 8.0, 8.5, 9.0, 9.5}[i % 6]);
  }
  auto v = ViewOf(highs, lows);
  ComputeBoxes(*v, false);
  EXPECT_GT(v->boxCount, StockView::kMaxDrawnBoxes);
  const std::string error = test::ErrorText([&] { ComputeBoxes(*v, true); });
  EXPECT_TRUE(error.starts_with("TEST.txt: more than 101 boxes")) << error;
  EXPECT_THROW(SetViewDays(*v, 1001), Error);
}

// A flat base (high 10, low 9) with the given highs, at positions from the oldest bar.
std::unique_ptr<StockView> BaseWithHighs(int days,
                                         const std::vector<std::pair<int, double>>& newHighs) {
  std::vector<double> highs(days, 10);
  for (const auto& [position, high] : newHighs) highs[position] = high;
  return ViewOf(highs, std::vector<double>(days, 9));
}

TEST(Corvanes, ANewHighAtLeast42DaysAfterThePreviousOne) {
  auto v = BaseWithHighs(150, {{5, 11}, {20, 9}, {47, 12}, {88, 13}});
  v->barLow[Pos(*v, 30)] = 8;  // the base low
  FindCorvanes(*v);
  ASSERT_EQ(v->corvaneCount, 1);  // 47 -> 88 is 41 days: too short
  EXPECT_EQ(Pos(*v, v->corvaneTopDay[0]), 5);
  EXPECT_EQ(Pos(*v, v->corvaneLowDay[0]), 30);
  EXPECT_EQ(Pos(*v, v->corvaneBreakDay[0]), 47);
}

TEST(Corvanes, EqualLowsKeepTheOlderDayAndTheNewest41DaysAreNotExamined) {
  auto v = BaseWithHighs(150, {{0, 11}, {60, 12}, {109, 20}});
  v->barLow[Pos(*v, 20)] = v->barLow[Pos(*v, 40)] = 8;
  FindCorvanes(*v);
  ASSERT_EQ(v->corvaneCount, 1);  // the high at 109 is day 40: the 41 newest days are skipped
  EXPECT_EQ(Pos(*v, v->corvaneLowDay[0]), 20);
  EXPECT_EQ(Pos(*v, v->corvaneBreakDay[0]), 60);
}

TEST(Corvanes, AViewLongerThanTheHistoryReadsZerosBeyondIt) {
  auto v = BaseWithHighs(200, {{0, 11}, {150, 12}});
  SetViewDays(*v, ViewDayCount(5));  // 277 days, beyond the 200 bars
  FindCorvanes(*v);
  EXPECT_EQ(v->corvaneCount, 1);
}

TEST(Views, DayCountsAndTitles) {
  const int days[] = {0, 5, 23, 69, 138, 276, 0};  // views 0 and 6 do not exist
  for (int view = 0; view <= 6; ++view) EXPECT_EQ(ViewDayCount(view), days[view]) << view;
  EXPECT_EQ(ViewTitle(3), "Ninety Day View - ");
  EXPECT_EQ(ViewTitle(6), "");
}

}  // namespace
}  // namespace halvard::engine
