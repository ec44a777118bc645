#include "halvard/platform/number_text.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>
#include <random>
#include <string>

namespace halvard::platform {
namespace {

TEST(NumberText, ShortestGeneralFormOfAwkwardValues) {
  EXPECT_EQ(FormatGeneral(0.1 + 0.2), "0.3");
  EXPECT_EQ(FormatGeneral(28.69 + 0.125), "28.815");
  EXPECT_EQ(FormatGeneral(3), "3");
  EXPECT_EQ(FormatGeneral(-2.5), "-2.5");
  EXPECT_EQ(FormatGeneral(0.0), "0");
  EXPECT_EQ(FormatGeneral(-0.0), "0");
  EXPECT_EQ(FormatGeneral(52.419998), "52.419998");
  EXPECT_EQ(FormatGeneral(1234567.25), "1234567.25");
  EXPECT_EQ(FormatGeneral(0.0001), "0.0001");
  EXPECT_EQ(FormatGeneral(0.00001), "1E-05");
  EXPECT_EQ(FormatGeneral(999999999999999.0), "999999999999999");
  EXPECT_EQ(FormatGeneral(1e15), "1E+15");
  EXPECT_EQ(FormatGeneral(2.0 / 3), "0.666666666666667");
}

TEST(NumberText, ParsesDecimalNumbersAndNothingElse) {
  EXPECT_EQ(ParseDouble("52.419998"), 52.419998);
  EXPECT_EQ(ParseDouble(" 12.5 "), 12.5);
  EXPECT_EQ(ParseDouble("+3"), 3);
  EXPECT_EQ(ParseDouble(".5"), 0.5);
  EXPECT_EQ(ParseDouble("-1e3"), -1000);
  for (const char* bad : {"", " ", "12a", "1,5", "abc", "--1", "+", "++5", "+-5", "+ 5", "-+5"}) {
    EXPECT_FALSE(ParseDouble(bad).has_value()) << bad;
    EXPECT_FALSE(ParseWholeNumber(bad).has_value()) << bad;
  }
}

TEST(NumberText, ShortDecimalsReadExactlyAsTheGeneralConversion) {
  // Short plain decimals take a quicker road; it must give the very same doubles.
  std::mt19937_64 random(7);
  for (int i = 0; i < 200000; ++i) {
    const int64_t digits = static_cast<int64_t>(random() % 1000000000000000ull) >> (random() % 50);
    std::string text = std::to_string(digits);
    const size_t decimals = random() % (text.size() + 1);
    if (decimals > 0) text.insert(text.size() - decimals, 1, '.');
    if (random() % 4 == 0) text.insert(0, 1, '-');
    double expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    ASSERT_EQ(ParseDouble(text), expected) << text;
  }
  EXPECT_EQ(ParseDouble("1234567890.1234567"), 1234567890.1234567);  // 17 digits
  EXPECT_EQ(ParseDouble("5."), 5);
  EXPECT_FALSE(ParseDouble(".").has_value());
  EXPECT_FALSE(ParseDouble("-").has_value());
  EXPECT_FALSE(ParseDouble("1.2.3").has_value());
}

TEST(NumberText, WholeNumbersRoundFractionsHalfToEven) {
  EXPECT_EQ(ParseWholeNumber("2696300"), 2696300);
  EXPECT_EQ(ParseWholeNumber("49650800.0"), 49650800);
  EXPECT_EQ(ParseWholeNumber("2.5"), 2);
  EXPECT_EQ(ParseWholeNumber("3.5"), 4);
  EXPECT_EQ(ParseWholeNumber("-2.5"), -2);
  EXPECT_EQ(ParseWholeNumber(" +7 "), 7);
  EXPECT_EQ(ParseWholeNumber("+7.5"), 8);
  EXPECT_EQ(ParseWholeNumber("4026560000"), INT64_C(4026560000));  // beyond 32 bits
  EXPECT_FALSE(ParseWholeNumber("1e30").has_value());
  EXPECT_FALSE(ParseWholeNumber("12x").has_value());
  EXPECT_FALSE(ParseWholeNumber("").has_value());
}

}  // namespace
}  // namespace halvard::platform
