#include "halvard/settings/value_from_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace halvard::settings {
namespace {

constexpr const char* kShort = "a whole number from -32768 to 32767";

TEST(ValueFromText, ShortsRoundHalfToEvenWithinSixteenBits) {
  const struct {
    const char* text;
    std::optional<int16_t> value;
  } cases[] = {
      {"12", 12},         {" 12 ", 12},         {"+7", 7},        {"-0", 0},
      {"1e3", 1000},      {"49.0", 49},         {"2.5", 2},       {"3.5", 4},
      {"-2.5", -2},       {"2.4999", 2},        {"32767", 32767}, {"32767.4", 32767},
      {"-32768", -32768}, {"-32768.5", -32768},  // half to even stays inside
      {"32767.5", {}},    {"32768", {}},        {"-32769", {}},   {"40000", {}},
      {"1e30", {}},       {"abc", {}},          {"", {}},         {"12x", {}},
      {"1,5", {}},        {"inf", {}},          {"nan", {}},      {"++5", {}},
  };
  for (const auto& c : cases) {
    const Converted<int16_t> got = ShortFromText(c.text);
    EXPECT_EQ(got.value, c.value) << '"' << c.text << '"';
    EXPECT_EQ(got.expected, c.value ? "" : kShort) << '"' << c.text << '"';
  }
}

TEST(ValueFromText, WholeNumbersOfANarrowerRangeNameItsLimits) {
  const struct {
    double number;
    std::optional<int> value;
  } cases[] = {
      {1, 1}, {1.5, 2}, {20.4, 20}, {20.5, 20}, {0.5, {}}, {0, {}}, {21, {}}, {-1, {}},
  };
  for (const auto& c : cases) {
    const Converted<int> got = WholeFromNumber(c.number, {1, 20});
    EXPECT_EQ(got.value, c.value) << c.number;
    EXPECT_EQ(got.expected, c.value ? "" : "a whole number from 1 to 20") << c.number;
  }
  EXPECT_EQ(WholeFromNumber(std::nan("")).expected, kShort);
}

// The [Services] numbers: a unit named in what is expected, the bounds included, and above a
// least alone when there is no most.
TEST(ValueFromText, NumbersOfAUnitNameTheUnitAndTheirBounds) {
  const WholeRange pause{0, 3600000, "milliseconds"};
  EXPECT_EQ(WholeFromText(" 500 ", pause).value, 500);
  EXPECT_EQ(WholeFromText("2.5", pause).value, 2);
  for (const char* refused : {"-1", "3600001", "abc", "++5", "inf"}) {
    const Converted<int> got = WholeFromText(refused, pause);
    EXPECT_FALSE(got.value) << refused;
    EXPECT_EQ(got.expected, "a whole number of milliseconds from 0 to 3600000") << refused;
  }
  EXPECT_EQ(WholeFromText("11", {0, 10}).expected, "a whole number from 0 to 10");

  const NumberRange timeout{1, 3600, "seconds"};
  const NumberRange wait{0, std::nullopt, "seconds"};
  EXPECT_EQ(NumberFromText("1", timeout).value, 1);
  EXPECT_EQ(NumberFromText("3600", timeout).value, 3600);
  EXPECT_EQ(NumberFromText("0.001", wait).value, 0.001);
  EXPECT_EQ(NumberFromText("1e9", wait).value, 1e9);
  const char* const kTimeout = "a number of seconds from 1 to 3600";
  const char* const kWait = "a number of seconds above 0";
  const struct {
    const NumberRange& range;
    const char* text;
    const char* expected;
  } refused[] = {
      {timeout, "0.9999", kTimeout}, {timeout, "3600.5", kTimeout},
      {timeout, "inf", kTimeout},    {timeout, "nan", kTimeout},
      {timeout, "x", kTimeout},      {wait, "0", kWait},
      {wait, "-2", kWait},           {wait, "inf", kWait},
      {wait, "nan", kWait},          {wait, "", kWait},
  };
  for (const auto& r : refused) {
    const Converted<double> got = NumberFromText(r.text, r.range);
    EXPECT_FALSE(got.value) << r.text;
    EXPECT_EQ(got.expected, r.expected) << r.text;
  }
}

TEST(ValueFromText, DoublesRefuseInfinityAndNanOnlyWhenTold) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    const char* text;
    std::optional<double> refusing;   // NonFinite::kRefused
    std::optional<double> accepting;  // NonFinite::kAccepted
  } cases[] = {
      {"0.125", 0.125, 0.125}, {" -1e3 ", -1000, -1000}, {"+.5", 0.5, 0.5}, {"inf", {}, inf},
      {"-inf", {}, -inf},      {"1/8", {}, {}},          {"0,25", {}, {}},  {"", {}, {}},
  };
  for (const auto& c : cases) {
    const Converted<double> refusing = DoubleFromText(c.text, NonFinite::kRefused);
    EXPECT_EQ(refusing.value, c.refusing) << c.text;
    EXPECT_EQ(refusing.expected, c.refusing ? "" : "a finite number") << c.text;
    const Converted<double> accepting = DoubleFromText(c.text, NonFinite::kAccepted);
    EXPECT_EQ(accepting.value, c.accepting) << c.text;
    EXPECT_EQ(accepting.expected, c.accepting ? "" : "a number") << c.text;
  }
  const Converted<double> nan = DoubleFromText("nan", NonFinite::kAccepted);
  ASSERT_TRUE(nan.value.has_value());
  EXPECT_TRUE(std::isnan(*nan.value));
  EXPECT_FALSE(DoubleFromText("nan", NonFinite::kRefused).value.has_value());
}

TEST(ValueFromText, BooleansAreTrueFalseInAnyCaseOrANumber) {
  const struct {
    const char* text;
    std::optional<bool> value;
  } cases[] = {
      {"True", true}, {" false ", false}, {"TRUE", true}, {"10", true}, {"-1", true},
      {"0", false},   {"0.0", false},     {"yes", {}},    {"", {}},     {"Truth", {}},
  };
  for (const auto& c : cases) {
    const Converted<bool> got = BooleanFromText(c.text);
    EXPECT_EQ(got.value, c.value) << '"' << c.text << '"';
    EXPECT_EQ(got.expected, c.value ? "" : "True, False or a number") << '"' << c.text << '"';
  }
}

TEST(ValueFromText, DatesAndTimesOfDayReadAsDayCounts) {
  const Converted<DateValue> time = DateFromText("4:00 PM");
  ASSERT_TRUE(time.value.has_value());
  EXPECT_NEAR(time.value->serial, 16.0 / 24, 1e-9);
  const Converted<DateValue> bad = DateFromText("someday");
  EXPECT_FALSE(bad.value.has_value());
  EXPECT_EQ(bad.expected, "a date or a time of day");
}

TEST(ValueFromText, AFractionIsTakenAsItIsALargerNumberAsAPercentage) {
  const struct {
    double typed;
    std::optional<double> fraction;
  } cases[] = {
      {0.5, 0.5}, {0.25, 0.25}, {50, 0.5}, {100, 1},   {150, 1.5},
      {1, {}},    {0, {}},      {-3, {}},  {-0.5, {}},
  };
  for (const auto& c : cases) EXPECT_EQ(FractionOrPercentage(c.typed), c.fraction) << c.typed;
}

TEST(ValueFromText, ARefusalQuotesTheTextAndNamesWhatStays) {
  EXPECT_EQ(UnchangedMessage("abc", "a number", "Stop Loss Limit"),
            "\"abc\" is not a number. Stop Loss Limit is unchanged.");
  EXPECT_EQ(UnchangedMessage("1.5e9", ShortFromText("1.5e9").expected, "RS days"),
            "\"1.5e9\" is not a whole number from -32768 to 32767. RS days is unchanged.");
}

}  // namespace
}  // namespace halvard::settings
