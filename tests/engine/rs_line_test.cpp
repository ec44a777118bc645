#include <gtest/gtest.h>

#include <memory>

#include "halvard/data/file_parser.h"
#include "halvard/engine/stock_view.h"
#include "test_support.h"

namespace halvard::engine {
namespace {

std::unique_ptr<StockView> WithCloses(int bars, double close, double index) {
  auto v = std::make_unique<StockView>();
  for (int i = 0; i < bars; ++i) {
    v->barClose[i] = close + i;
    v->indexClose[i] = index;
  }
  v->barCount = bars;
  v->rsAvailable = true;
  return v;
}

TEST(RSLine, CloseOverIndexCloseWithTenPercentHeadRoom) {
  auto v = WithCloses(3, 10, 100);  // 0.10, 0.11, 0.12
  v->indexClose[1] = 0;             // no index close: the newer day's value carries
  ComputeRSLine(*v);
  EXPECT_DOUBLE_EQ(v->rsLine[0], 0.10);
  EXPECT_DOUBLE_EQ(v->rsLine[1], 0.10);
  EXPECT_DOUBLE_EQ(v->rsLine[2], 0.12);
  EXPECT_DOUBLE_EQ(v->rsMin, 0.09);
  EXPECT_DOUBLE_EQ(v->rsMax, 0.132);
}

TEST(RSLine, NothingWithoutTheIndexOrWithoutBars) {
  auto v = WithCloses(3, 10, 100);
  v->rsAvailable = false;
  ComputeRSLine(*v);
  EXPECT_EQ(v->rsLine[0], 0);
  v->rsAvailable = true;
  v->barCount = 0;
  ComputeRSLine(*v);
  EXPECT_EQ(v->rsLine[0], 0);
  // No index close on the newest day: nothing to carry, the line keeps what it had.
  auto w = WithCloses(3, 10, 100);
  w->rsLine = {7, 7, 7};
  w->indexClose[0] = 0;
  ComputeRSLine(*w);
  EXPECT_EQ(w->rsLine[0], 7);
  EXPECT_EQ(w->rsLine[2], 7);
}

TEST(RSLine, StopsAt366DaysKeepingWhatItComputed) {
  auto v = WithCloses(500, 1, 1000);
  ComputeRSLine(*v);
  EXPECT_DOUBLE_EQ(v->rsLine[365], 366 / 1000.0);
  EXPECT_DOUBLE_EQ(v->rsMax, 366 / 1000.0);  // ended early: no head-room added
  EXPECT_DOUBLE_EQ(v->rsMin, 1 / 1000.0);
}

TEST(RSLine, ARealSymbolAgainstTheRealIndex) {
  auto v = std::make_unique<StockView>();
  ASSERT_TRUE(data::LoadIndexFile(*v, (test::SamplePrices() / "^IXIC.txt").string()));
  ASSERT_TRUE(data::LoadStockFile(*v, (test::SamplePrices() / "AAL.txt").string()));
  ComputeRSLine(*v);
  EXPECT_DOUBLE_EQ(v->rsLine[0], 52.029999 / 6903.39);  // both files end on 12/29/2017
  EXPECT_GT(v->rsLine[251], 0);
  EXPECT_EQ(v->rsLine[252], 0);
}

}  // namespace
}  // namespace halvard::engine
