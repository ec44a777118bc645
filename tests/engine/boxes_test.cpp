#include <gtest/gtest.h>

#include <memory>

#include "halvard/data/file_parser.h"
#include "halvard/engine/stock_view.h"
#include "halvard/error.h"
#include "test_support.h"

namespace halvard::engine {
namespace {

struct Bar {
  double high;
  double low;
};

// A view over the given bars, written oldest first (as one reads a chart, left to right);
// the finders see them newest first. The view covers every bar.
std::unique_ptr<StockView> ViewOf(const std::vector<Bar>& oldestFirst) {
  auto v = std::make_unique<StockView>();
  const int n = static_cast<int>(oldestFirst.size());
  for (int j = 0; j < n; ++j) {
    v->barHigh[n - 1 - j] = oldestFirst[j].high;
    v->barLow[n - 1 - j] = oldestFirst[j].low;
  }
  v->barCount = n;
  v->stockFilePath = "TEST.txt";
  SetViewDays(*v, n - 1);
  return v;
}

// A box in terms of positions counted from the oldest bar, for readable expectations.
struct Box {
  int top, bottom, end, brokeUp;
  bool operator==(const Box&) const = default;
};

std::vector<Box> BoxesOf(const StockView& v) {
  std::vector<Box> boxes;
  const int n = v.viewDays;
  auto pos = [n](int day) { return day == -1 ? -1 : n - 1 - day; };
  for (int k = 0; k < v.boxCount; ++k) {
    boxes.push_back(
        {pos(v.boxTopDay[k]), pos(v.boxBottomDay[k]), pos(v.boxEndDay[k]), v.boxBrokeUp[k]});
  }
  return boxes;
}

std::ostream& operator<<(std::ostream& os, const Box& b) {
  return os << "{top " << b.top << ", bottom " << b.bottom << ", end " << b.end << ", up "
            << b.brokeUp << "}";
}

TEST(Boxes, ATopABottomAndTheBreakout) {
  const auto v = ViewOf({{10, 9},     // 0
                         {12, 10},    // 1 top: above the three highs after it
                         {11, 8},     // 2 bottom: below the three lows after it
                         {11, 8.5},   // 3
                         {11.5, 9},   // 4
                         {11, 9},     // 5 inside
                         {12.5, 10},  // 6 breaks up
                         {12, 11},    // 7
                         {12, 11}});
  FindBoxes(*v);
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{1, 2, 6, 1}}));
}

TEST(Boxes, ABreakBothWaysCountsAsDownAndTheBreakDayIsNoTop) {
  // The break day (6) has the highest high of all, yet the next top search starts after it.
  const auto v = ViewOf({{10, 9},
                         {12, 10},
                         {11, 8},
                         {11, 8.5},
                         {11.5, 9},
                         {11, 9},
                         {20, 7},  // 6: above the top and below the bottom
                         {19, 9},
                         {18, 9},
                         {17, 9},
                         {16, 9}});
  FindBoxes(*v);
  // Day 7 is the next top (above 8, 9, 10); it never gets a bottom, so it is not counted.
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{1, 2, 6, 0}}));
  EXPECT_EQ(v->boxTopDay[1], 3);  // written beyond boxCount: position 7 is day 3
}

TEST(Boxes, TheNewestBoxStaysOpen) {
  const auto v = ViewOf({{10, 9}, {12, 10}, {11, 8}, {11, 8.5}, {11.5, 9}, {11, 9}, {11.9, 8.1}});
  v->boxBrokeUp[0] = 0;
  FindBoxes(*v);
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{1, 2, -1, 0}}));  // brokeUp is left as it was
}

TEST(Boxes, NothingIsConfirmedOnTheThreeNewestDaysButABoxCanEndThere) {
  // A would-be top on day 2 (position 5): it has only two newer days.
  const auto v = ViewOf(
      {{10, 9}, {12, 10}, {11, 8}, {11, 8.5}, {11.5, 9}, {11, 9}, {12.5, 9}, {12.4, 9}, {12.3, 9}});
  FindBoxes(*v);
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{1, 2, 6, 1}}));  // ends on day 2, no new top
  const auto w =
      ViewOf({{10, 9}, {12, 10}, {11, 9}, {11, 9}, {11, 9}, {11, 8}, {11, 8.5}, {11, 9}});
  FindBoxes(*w);  // the lowest low is on day 2: too new to be a bottom
  EXPECT_EQ(w->boxCount, 0);
}

TEST(Boxes, EqualHighsAndLowsAreNotTopsAndBottoms) {
  // Two equal highs side by side: the older is not a top; the newer is, its three newer highs
  // being lower.
  const auto v = ViewOf(
      {{10, 9}, {12, 10}, {12, 10}, {11, 8}, {11, 8.5}, {11.5, 9}, {11, 9}, {13, 11}, {13, 11}});
  FindBoxes(*v);
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{2, 3, 7, 1}}));
  // An equal low later on keeps a low from being a bottom.
  const auto w =
      ViewOf({{10, 9}, {12, 10}, {11, 8}, {11, 8}, {11.5, 9}, {11, 9}, {11, 9}, {11, 9}});
  FindBoxes(*w);
  EXPECT_EQ(BoxesOf(*w), (std::vector<Box>{{1, 3, -1, 0}}));
}

TEST(Boxes, ARiseAboveTheTopBeforeTheBottomNeitherEndsNorMovesTheBox) {
  const auto v = ViewOf({{10, 9},
                         {12, 10},
                         {11, 9.5},
                         {11, 9.4},
                         {11, 9.3},
                         {13, 9.8},  // above the top while the bottom is still unknown
                         {11, 8},
                         {11, 8.5},
                         {11.5, 9},
                         {11, 9},
                         {11, 7}});
  FindBoxes(*v);
  EXPECT_EQ(BoxesOf(*v), (std::vector<Box>{{1, 6, 10, 0}}));
}

TEST(Boxes, SteadyMarketsMakeNoBoxes) {
  std::vector<Bar> rising, falling;
  for (int i = 0; i < 40; ++i) {
    rising.push_back({10.0 + i, 9.0 + i});
    falling.push_back({50.0 - i, 49.0 - i});
  }
  auto up = ViewOf(rising);
  FindBoxes(*up);
  EXPECT_EQ(up->boxCount, 0);
  // Falling every day: the oldest day is a top, but no bottom ever follows.
  auto down = ViewOf(falling);
  FindBoxes(*down);
  EXPECT_EQ(down->boxCount, 0);
  EXPECT_EQ(down->boxTopDay[0], 39);
}

TEST(Boxes, EveryBoxOfARealHistoryHoldsItsDefinition) {
  auto v = std::make_unique<StockView>();
  ASSERT_TRUE(data::LoadStockFile(*v, (test::LongPrices() / "AMD.txt").string()));
  SetViewDays(*v, 700);
  FindBoxes(*v);
  ASSERT_GT(v->boxCount, 20);
  const auto& h = v->barHigh;
  const auto& l = v->barLow;
  int previousEnd = v->viewDays;
  for (int k = 0; k < v->boxCount; ++k) {
    const int t = v->boxTopDay[k], b = v->boxBottomDay[k], e = v->boxEndDay[k];
    SCOPED_TRACE("box " + std::to_string(k));
    EXPECT_LT(t, previousEnd);  // after the previous box ended
    EXPECT_TRUE(h[t] > h[t - 1] && h[t] > h[t - 2] && h[t] > h[t - 3]);
    EXPECT_LT(b, t);
    EXPECT_TRUE(l[b] < l[b - 1] && l[b] < l[b - 2] && l[b] < l[b - 3]);
    const int last = e == -1 ? 0 : e + 1;
    for (int i = b - 1; i >= last; --i) EXPECT_TRUE(h[i] <= h[t] && l[i] >= l[b]) << i;
    if (e != -1) {
      EXPECT_TRUE(h[e] > h[t] || l[e] < l[b]);
      EXPECT_EQ(v->boxBrokeUp[k], l[e] < l[b] ? 0 : 1);
    } else {
      EXPECT_EQ(k, v->boxCount - 1);
    }
    previousEnd = e;
  }
}

TEST(Boxes, DrawingColoursTheBoxesAndOpensTheNewest) {
  auto v = ViewOf({{10, 9}, {12, 10}, {11, 8},   {11, 8.5}, {11.5, 9}, {11, 9}, {11, 7},  // down
                   {10, 6}, {11, 7},  {10, 5},   {10, 5.5}, {10, 6},   {10, 6}, {12, 7},  // up
                   {11, 8}, {10, 7},  {10, 7.5}, {9, 7.2},  {9, 7.1},  {9, 7.3}});        // open
  v->boxBrokeUp[2] = 0;
  ComputeBoxes(*v, false);
  ASSERT_EQ(v->boxCount, 3);
  EXPECT_EQ(v->boxBrokeUp[2], 0);
  EXPECT_EQ(v->lastBoxText, "");  // only drawing sets it
  ComputeBoxes(*v, true);
  EXPECT_EQ(v->boxColor[0], StockView::kYellow);
  EXPECT_EQ(v->boxColor[1], StockView::kRed);
  EXPECT_EQ(v->boxColor[2], StockView::kRed);
  EXPECT_EQ(v->boxBrokeUp[2], 1);
  EXPECT_EQ(v->lastBoxText, "11,7");
  // With no box at all the text stays what it was.
  auto flat = ViewOf(std::vector<Bar>(10, Bar{10, 9}));
  flat->lastBoxText = "5,4";
  ComputeBoxes(*flat, true);
  EXPECT_EQ(flat->lastBoxText, "5,4");
}

TEST(Boxes, TheLimitsOfTheArraysAreErrorsNamingTheFile) {
  // A box every six days over 1001 days: about 166 boxes, more than can be drawn.
  std::vector<Bar> bars;
  for (int i = 0; i < 1001; ++i) {
    static constexpr Bar kCycle[] = {{10, 9}, {12, 10}, {11, 8}, {11, 8.5}, {11.5, 9}, {13, 9.5}};
    bars.push_back(kCycle[i % 6]);
  }
  auto v = ViewOf(bars);
  ComputeBoxes(*v, false);
  EXPECT_GT(v->boxCount, StockView::kMaxDrawnBoxes);
  try {
    ComputeBoxes(*v, true);
    FAIL() << "expected an error";
  } catch (const Error& e) {
    EXPECT_NE(std::string(e.what()).find("TEST.txt: more than 101 boxes"), std::string::npos)
        << e.what();
  }
  EXPECT_THROW(SetViewDays(*v, 1001), Error);
}

// Highs and lows for corvane tests: a flat base at 10 with the given new highs.
std::unique_ptr<StockView> BaseWithHighs(int days,
                                         const std::vector<std::pair<int, double>>& highs) {
  std::vector<Bar> bars(days, Bar{10, 9});
  for (const auto& [position, high] : highs) bars[position] = {high, 9.5};
  return ViewOf(bars);
}

TEST(Corvanes, ANewHighAtLeast42DaysAfterThePreviousOne) {
  // Positions from the oldest bar: high at 5, next new high 42 days later at 47.
  auto v = BaseWithHighs(120, {{5, 11}, {20, 9}, {47, 12}, {88, 13}});
  v->barLow[v->viewDays - 1 - 30] = 8;  // the base low
  FindCorvanes(*v);
  ASSERT_EQ(v->corvaneCount, 1);  // 47 -> 88 is 41 days: too short
  const int n = v->viewDays;
  EXPECT_EQ(v->corvaneTopDay[0], n - 1 - 5);
  EXPECT_EQ(v->corvaneLowDay[0], n - 1 - 30);
  EXPECT_EQ(v->corvaneBreakDay[0], n - 1 - 47);
}

TEST(Corvanes, EqualLowsKeepTheOlderDayAndTheNewest41DaysAreNotExamined) {
  auto v = BaseWithHighs(150, {{0, 11}, {60, 12}, {130, 20}});
  const int n = v->viewDays;
  v->barLow[n - 1 - 20] = 8;
  v->barLow[n - 1 - 40] = 8;
  FindCorvanes(*v);
  ASSERT_EQ(v->corvaneCount, 1);  // the high at 130 is day 19: newer than day 41
  EXPECT_EQ(v->corvaneLowDay[0], n - 1 - 20);
  EXPECT_EQ(v->corvaneBreakDay[0], n - 1 - 60);
}

TEST(Corvanes, ViewsShorterThan42DaysFindNone) {
  auto v = BaseWithHighs(200, {{0, 11}, {150, 12}});
  SetViewDays(*v, ViewDayCount(2));  // 23 days
  FindCorvanes(*v);
  EXPECT_EQ(v->corvaneCount, 0);
  SetViewDays(*v, ViewDayCount(5));  // 277 days, beyond the 200 bars: zeros there
  FindCorvanes(*v);
  EXPECT_EQ(v->corvaneCount, 1);
}

TEST(Views, DayCountsAndTitles) {
  const int days[] = {5, 23, 69, 138, 276};
  for (int view = 1; view <= 5; ++view) EXPECT_EQ(ViewDayCount(view), days[view - 1]);
  EXPECT_EQ(ViewDayCount(0), 0);
  EXPECT_EQ(ViewDayCount(6), 0);
  EXPECT_EQ(ViewTitle(2), "Thirty Day View - ");
  EXPECT_EQ(ViewTitle(3), "Ninety Day View - ");
  EXPECT_EQ(ViewTitle(6), "");
}

}  // namespace
}  // namespace halvard::engine
