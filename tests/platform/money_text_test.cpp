#include "halvard/platform/money_text.h"

#include <gtest/gtest.h>

namespace halvard::platform {
namespace {

TEST(MoneyText, TwoDecimalsGroupedWithParenthesesForLosses) {
  EXPECT_EQ(FormatMoney(1234.5), "1,234.50");
  EXPECT_EQ(FormatMoney(-0.5), "(0.50)");
  EXPECT_EQ(FormatMoney(0), "0.00");
  EXPECT_EQ(FormatMoney(0.1 + 0.2), "0.30");
  EXPECT_EQ(FormatMoney(28.69 + 0.125), "28.82");  // 28.815 in 15 digits, rounded up
  EXPECT_EQ(FormatMoney(0.125), "0.13");
  EXPECT_EQ(FormatMoney(4978.125), "4,978.13");
  EXPECT_EQ(FormatMoney(-1853.25), "(1,853.25)");
  EXPECT_EQ(FormatMoney(999.995), "1,000.00");
  EXPECT_EQ(FormatMoney(1234567.891), "1,234,567.89");
  EXPECT_EQ(FormatMoney(-0.001), "(0.00)");  // a loss, however small, keeps its parentheses
  EXPECT_EQ(FormatMoney(0.004), "0.00");
}

TEST(MoneyText, FixedDecimalsWithALeadingMinus) {
  EXPECT_EQ(FormatFixed(0.125, 3), "0.125");
  EXPECT_EQ(FormatFixed(-1234.5, 2), "-1,234.50");
  EXPECT_EQ(FormatFixed(-0.001, 2), "-0.00");
  EXPECT_EQ(FormatFixed(2.0 / 3, 3), "0.667");
  EXPECT_EQ(FormatFixed(1000000, 0), "1,000,000");
}

}  // namespace
}  // namespace halvard::platform
