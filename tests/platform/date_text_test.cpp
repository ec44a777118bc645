#include "halvard/platform/date_text.h"

#include <gtest/gtest.h>

#include <tuple>

namespace halvard::platform {
namespace {

TEST(DateText, ReadsTheDateFormsOfPriceFilesAndSettings) {
  const double dec29 = 43098;  // 12/29/2017 counted from 12/30/1899
  EXPECT_EQ(ParseDate("2017-12-29"), dec29);
  EXPECT_EQ(ParseDate("12/29/2017"), dec29);
  EXPECT_EQ(ParseDate("12/29/17"), dec29);
  EXPECT_EQ(ParseDate("29-Dec-17"), dec29);
  EXPECT_EQ(ParseDate("29-dec-2017"), dec29);
  EXPECT_EQ(ParseDate(" 2017-12-29 "), dec29);
  EXPECT_EQ(ParseDate("1899-12-30"), 0);
  EXPECT_EQ(ParseDate("1900-03-01"), 61);
  EXPECT_EQ(ParseDate("2000-02-29"), 36585);
}

TEST(DateText, TwoDigitYearsPivotAtThirty) {
  EXPECT_EQ(FormatShortDate(*ParseDate("1/1/00")), "1/1/2000");
  EXPECT_EQ(FormatShortDate(*ParseDate("3-Mar-29")), "3/3/2029");
  EXPECT_EQ(FormatShortDate(*ParseDate("1/1/30")), "1/1/1930");
  EXPECT_EQ(FormatShortDate(*ParseDate("12/31/99")), "12/31/1999");
}

TEST(DateText, RefusesWhatIsNotADate) {
  for (const char* text : {"", "2017-02-30", "2017-13-01", "13/1/2017", "0/1/2017", "abc",
                           "2017-12-29x", "29-Dex-17", "2017/12", "1e5", "2017-12-29,"}) {
    EXPECT_FALSE(ParseDate(text).has_value()) << text;
  }
}

TEST(DateText, TimesOfDayInTwelveAndTwentyFourHourForms) {
  EXPECT_DOUBLE_EQ(*ParseDateTime("4:00 PM"), 16.0 / 24);
  EXPECT_DOUBLE_EQ(*ParseDateTime("16:00"), 16.0 / 24);
  EXPECT_DOUBLE_EQ(*ParseDateTime("4:00:30 pm"), (16 * 3600 + 30) / 86400.0);
  EXPECT_DOUBLE_EQ(*ParseDateTime("12:00 AM"), 0);
  EXPECT_DOUBLE_EQ(*ParseDateTime("12:15 PM"), (12 * 60 + 15) / 1440.0);
  EXPECT_DOUBLE_EQ(*ParseDateTime("1/1/2000 4:00 PM"), 36526 + 16.0 / 24);
  EXPECT_FALSE(ParseDateTime("13:00 PM").has_value());
  EXPECT_FALSE(ParseDateTime("4:60").has_value());
  EXPECT_FALSE(ParseDateTime("4 PM").has_value());
}

TEST(DateText, FormatsShortDatesTimesAndBoth) {
  EXPECT_EQ(FormatShortDate(*ParseDate("2003-11-07")), "11/7/2003");
  EXPECT_EQ(FormatTime(16.0 / 24), "4:00:00 PM");
  EXPECT_EQ(FormatTime(0), "12:00:00 AM");
  EXPECT_EQ(FormatTime(12.5 / 24), "12:30:00 PM");
  // A date alone, a time alone (day 0) and both, as the settings store them.
  EXPECT_EQ(FormatDateTime(36526), "1/1/2000");
  EXPECT_EQ(FormatDateTime(16.0 / 24), "4:00:00 PM");
  EXPECT_EQ(FormatDateTime(36526 + 9.5 / 24), "1/1/2000 9:30:00 AM");
}

TEST(DateText, CivilDatesRoundTripAcrossCenturies) {
  for (const CivilDate d : {CivilDate{1899, 12, 30}, CivilDate{1900, 2, 28}, CivilDate{2000, 2, 29},
                            CivilDate{2017, 12, 29}, CivilDate{2100, 3, 1}}) {
    const CivilDate back = CivilFromSerial(SerialFromCivil(d));
    EXPECT_EQ(std::tie(back.year, back.month, back.day), std::tie(d.year, d.month, d.day));
  }
  // A time of day does not move the date.
  EXPECT_EQ(FormatShortDate(43098.99), "12/29/2017");
}

}  // namespace
}  // namespace halvard::platform
