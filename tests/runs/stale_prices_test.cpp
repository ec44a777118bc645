#include "halvard/runs/stale_prices.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

double Day(int y, int m, int d) {
  return platform::SerialFromCivil({y, m, d});
}

TEST(StalePrices, TradingDaysAreTheWeekdaysAfterTheNewestDay) {
  const double friday = Day(2017, 12, 29);
  EXPECT_EQ(TradingDaysSince(friday, friday), 0);
  EXPECT_EQ(TradingDaysSince(friday, Day(2017, 12, 31)), 0);  // the weekend
  EXPECT_EQ(TradingDaysSince(friday, Day(2018, 1, 5)), 5);
  EXPECT_EQ(TradingDaysSince(friday, Day(2018, 1, 8)), 6);
}

class StalePricesTest : public RunsTest {};

TEST_F(StalePricesTest, TheListsFirstStockSaysHowOldThePricesAre) {
  test::WriteText(dir / "OLD.txt", test::PriceFile({"12/29/2017,1,2,0.5,1.5,100"}));
  List({"OLD", "NOPE"});
  EXPECT_EQ(StalePricesWarning(s, Day(2018, 1, 5)), std::nullopt);
  EXPECT_EQ(StalePricesWarning(s, Day(2018, 1, 8)), "newest prices are from 12/29/2017");
  test::WriteText(dir / "NEW.txt", test::PriceFile({"1/8/2018,1,2,0.5,1.5,100"}));
  s.ShowSymbol("NEW");  // what the view shows now plays no part
  EXPECT_EQ(StalePricesWarning(s, Day(2018, 1, 8)), "newest prices are from 12/29/2017");

  List({"NOPE", "OLD"});  // row 0 without a file: nothing to say
  EXPECT_EQ(StalePricesWarning(s, Day(2018, 1, 8)), std::nullopt);
}

}  // namespace
}  // namespace halvard::runs
