// The request of a screener service and the form of its answer.

#include "halvard/screener/screen_query.h"

#include <gtest/gtest.h>

#include "halvard/screener/criteria_table.h"

namespace halvard::screener {
namespace {

TEST(ScreenQueryTest, EveryCriterionHasItsOwnParameterInTheDocumentedForm) {
  ScreenCriteria c;
  c.industry = "Oil & Gas Drilling";
  c.exchange = " NYSE ";
  c.index = "S&P 500";
  c.price = {5, 50};
  c.averageVolume.min = 100000;
  c.marketCap.min = 2000;
  c.dividendYield.min = 1.5;
  c.performance = {-10, 200};
  c.beta.max = 1.2;
  c.sales.min = 1e6;
  c.profitMargin.min = 12.5;
  c.priceEarnings.max = 15;
  c.priceSales.max = 2;
  c.priceBook.max = 3;
  c.eps.min = 0.25;
  c.epsGrowthThisYear.min = 20;
  c.epsGrowthNextYear.min = 15;
  c.recommendation.max = 2;
  EXPECT_EQ(ScreenQuery(c, 3),
            "/screen?industry=Oil%20%26%20Gas%20Drilling&exchange=NYSE&index=S%26P%20500&"
            "price=5..50&volume=100000..&market-cap=2000..&dividend-yield=1.5..&"
            "performance=-10..200&beta=..1.2&sales=1000000..&profit-margin=12.5..&pe=..15&"
            "ps=..2&pb=..3&eps=0.25..&eps-growth-this-year=20..&eps-growth-next-year=15..&"
            "recommendation=..2&page=3");
  EXPECT_EQ(ScreenQuery(ScreenCriteria{}, 1), "/screen?page=1");
  EXPECT_EQ(EscapeQueryText("a+b/c?d=é~_-."), "a%2Bb%2Fc%3Fd%3D%C3%A9~_-.");
}

TEST(ScreenQueryTest, SettingOneCriterionSetsOnlyItsParameter) {
  for (const RangeCriterion& r : RangeCriteria()) {
    ScreenCriteria c;
    (c.*r.field).max = 7;
    EXPECT_EQ(ScreenQuery(c, 1), "/screen?" + std::string(r.key) + "=..7&page=1") << r.label;
  }
  for (const TextCriterion& t : TextCriteria()) {
    ScreenCriteria c;
    c.*t.field = "x y";
    EXPECT_EQ(ScreenQuery(c, 1), "/screen?" + std::string(t.key) + "=x%20y&page=1") << t.label;
    c.*t.field = "   ";
    EXPECT_EQ(ScreenQuery(c, 1), "/screen?page=1") << t.label << " of spaces only";
  }
}

TEST(ScreenQueryTest, AnswersAreReadByTheirFirstColumnUnderASymbolHeader) {
  using Symbols = std::vector<std::string>;
  EXPECT_EQ(
      ParseScreenAnswer("\r\n\"symbol\",\"Name\"\r\n\"AAA\",\"A, Inc\"\r\n\r\n BBB ,x\r\nCCC"),
      (Symbols{"AAA", "BBB", "CCC"}));
  EXPECT_EQ(ParseScreenAnswer("Symbol\n"), Symbols{});
  for (const char* wrong : {"", "Ticker,Name\nAAA,A", "<html>Symbol</html>", "{\"error\":1}"}) {
    EXPECT_FALSE(ParseScreenAnswer(wrong)) << wrong;
  }
}

}  // namespace
}  // namespace halvard::screener
