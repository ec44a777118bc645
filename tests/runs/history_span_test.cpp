// Cutting a history into spans, and a window's view: the days after it gone, the summaries and
// the RS line those of that day.

#include "halvard/runs/history_span.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "halvard/engine/back_tester.h"
#include "halvard/error.h"

namespace halvard::runs {
namespace {

// "newest day+days" of each span, oldest first.
std::string Shown(const std::vector<DaySpan>& spans) {
  std::string text;
  for (const DaySpan& s : spans) {
    text += std::to_string(s.newestDay) + "+" + std::to_string(s.days) + " ";
  }
  return text;
}

TEST(SplitHistory, EqualSpansOldestFirstTheOddDaysInTheNewestNoneShorterThanAMonth) {
  const auto spans = SplitHistory(139, 3);
  EXPECT_EQ(Shown(spans), "93+46 47+46 0+47 ");
  EXPECT_EQ(Shown({JoinSpans(spans, 0, 1), JoinSpans(spans, 0, 2)}), "47+92 0+139 ");
  const auto most = SplitHistory(1001, 43);  // 43 spans of 23 leave 12 days over
  EXPECT_EQ(most.size(), 43u);
  EXPECT_EQ(Shown({most.front(), most.back()}), "978+23 0+35 ");
  EXPECT_EQ(Shown(SplitHistory(68, 3)), "");  // spans of 22
  EXPECT_EQ(Shown(SplitHistory(69, 3)), "46+23 23+23 0+23 ");
}

class CutToSpanTest : public ::testing::Test {
 protected:
  // Ten days, the newest (day 0) the highest and loudest; an RS line that rose every day.
  CutToSpanTest() {
    full->stockFilePath = "/prices/UP.txt";
    full->barCount = 10;
    for (int i = 0; i < 10; ++i) {
      full->barDate[i] = 45000 - i;
      full->barHigh[i] = 20 - i;
      full->barLow[i] = 10 - i;
      full->barOpen[i] = full->barClose[i] = 15 - i;
      full->barVolume[i] = 1000 * (10 - i);
    }
    full->rsAvailable = true;
    for (int i = 0; i < engine::StockView::kRsValues; ++i) full->rsLine[i] = 1 - i * 0.001;
  }
  std::unique_ptr<engine::StockView> full = std::make_unique<engine::StockView>();
  std::unique_ptr<engine::StockView> window = std::make_unique<engine::StockView>();
};

TEST_F(CutToSpanTest, TheWindowEndsOnItsNewestDayWithTheSummariesOfThatDay) {
  CutToSpan(*full, {3, 4}, *window);  // days 3 to 6; days 7 to 9 stay loaded behind them
  EXPECT_EQ(window->barCount, 7);
  EXPECT_EQ(window->viewDays, 4);
  EXPECT_EQ(window->barDate[0], 44997);
  EXPECT_EQ(window->barHigh[6], 11);
  EXPECT_EQ(window->highestHigh, 17);  // the three newer days are not seen
  EXPECT_EQ(window->maxVolume, 7000);
  EXPECT_EQ(window->newestDate, 44997);
  EXPECT_EQ(window->oldestDate, 44991);
  EXPECT_EQ(window->rsLine[0], full->rsLine[3]);
  // Nothing of the newer days is left at the old end of the arrays either.
  EXPECT_EQ(window->barHigh[engine::StockView::kMaxBars - 1], 0);
}

TEST_F(CutToSpanTest, AnRsComparisonPastTheMovedLineFails) {
  platform::StringSink log, rows;
  full->barCount = 400;
  CutToSpan(*full, {30, 10}, *window);
  engine::BackTester tester(*window, log, rows);
  // The line falls with every older day, so a check the line covers passes.
  EXPECT_TRUE(tester.RSCheck(330, 5, true));
  // Day 331 of the window, compared 5 days back, reads day 366 of the line: never held.
  EXPECT_FALSE(tester.RSCheck(331, 5, true));
  EXPECT_TRUE(std::isnan(window->rsLine[engine::StockView::kRsValues - 30]));
}

TEST_F(CutToSpanTest, AWindowOutsideTheLoadedDaysIsAnError) {
  EXPECT_THROW(CutToSpan(*full, {8, 3}, *window), Error);
  EXPECT_THROW(CutToSpan(*full, {-1, 3}, *window), Error);
}

}  // namespace
}  // namespace halvard::runs
