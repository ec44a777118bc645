#include "halvard/runs/json_fields.h"

#include <gtest/gtest.h>

#include <cmath>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"

namespace halvard::runs {
namespace {

TEST(JsonFieldsTest, DatesAreIsoTextAndDayZeroIsNoDate) {
  EXPECT_EQ(DateField(platform::SerialFromCivil({2017, 12, 29})), "2017-12-29");
  EXPECT_EQ(DateField(platform::SerialFromCivil({2004, 2, 29})), "2004-02-29");
  EXPECT_TRUE(DateField(0).is_null());
}

TEST(JsonFieldsTest, AmountsRoundToTheCentAsTheTextReportsDo) {
  // Half away from zero on the 15-digit decimal form: 28.815 is 28.8149999... in binary.
  EXPECT_EQ(MoneyField(28.69 + 0.125), 28.82);
  EXPECT_EQ(MoneyField(0.125), 0.13);
  EXPECT_EQ(MoneyField(-0.125), -0.13);
  EXPECT_EQ(MoneyField(1234567.891), 1234567.89);  // no thousands separator left in
  // A loss that rounds to nothing is no negative zero.
  EXPECT_FALSE(std::signbit(MoneyField(-0.001)));
}

TEST(JsonFieldsTest, NumbersKeepTheFifteenDigitsTheTextShows) {
  EXPECT_EQ(GeneralField(2646.4418190000015), 2646.441819);
  EXPECT_EQ(GeneralField(0.1 + 0.2), 0.3);
  EXPECT_EQ(GeneralField(12.835), 12.835);
}

TEST(JsonFieldsTest, TheDocumentIsOneLineAndTextThatIsNotUtf8IsAnError) {
  JsonDocument d;
  d["symbol"] = "A\nB";
  d["date"] = DateField(0);
  EXPECT_EQ(JsonText(d), "{\"symbol\":\"A\\nB\",\"date\":null}");
  d["symbol"] = "\xff";
  EXPECT_THROW(JsonText(d), Error);
}

}  // namespace
}  // namespace halvard::runs
