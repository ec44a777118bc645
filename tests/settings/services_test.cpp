#include "halvard/settings/services.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::settings {
namespace {

TEST(Services, RetriesAndTheAnswerLimitReadFromTheSectionOrKeepTheirDefaults) {
  test::TempDir dir;
  test::WriteText(dir / "s.ini", "[Services]\r\nretries=0\r\nAnswer Limit = 8\r\n");
  const ServiceSettings read = ReadServiceSettings(MRegistry(dir / "s.ini"));
  EXPECT_EQ(read.retries, 0);
  EXPECT_EQ(read.answerLimitMegabytes, 8);
  EXPECT_EQ(read.retryWaitSeconds, ServiceSettings{}.retryWaitSeconds);

  ServiceSettings set;
  SetServiceSettingFromText(set, "Retry Total Wait", "90");
  EXPECT_EQ(set.retryTotalWaitSeconds, 90);
  for (const auto& [name, text] : {std::pair{"Retries", "11"}, std::pair{"Retries", "-1"},
                                   std::pair{"Answer Limit", "0"}, std::pair{"Retry Wait", "x"}}) {
    EXPECT_THROW(SetServiceSettingFromText(set, name, text), UsageError) << name << "=" << text;
  }
  test::WriteText(dir / "bad.ini", "[Services]\r\nAnswer Limit=lots\r\n");
  EXPECT_EQ(test::ErrorText([&] { ReadServiceSettings(MRegistry(dir / "bad.ini")); }),
            (dir / "bad.ini").string() +
                ": setting [Services] Answer Limit = \"lots\" is not a whole number of megabytes "
                "from 1 to 4096");
}

// A time-out below a second rounds to none at all for the transfer library, and one that does
// not end is none either: both are refused with the bounds named, from the file and from --set.
TEST(Services, DurationsOutsideTheirBoundsAreRefusedWithTheBounds) {
  test::TempDir dir;
  const struct {
    const char* name;
    const char* text;
    const char* bounds;
  } refused[] = {
      {"Timeout", "0.0001", "a number of seconds from 1 to 3600"},
      {"Timeout", "0", "a number of seconds from 1 to 3600"},
      {"Timeout", "inf", "a number of seconds from 1 to 3600"},
      {"Timeout", "1e300", "a number of seconds from 1 to 3600"},
      {"Timeout", "nan", "a number of seconds from 1 to 3600"},
      {"Pause", "-1", "a whole number of milliseconds from 0 to 3600000"},
      {"Pause", "3600001", "a whole number of milliseconds from 0 to 3600000"},
  };
  for (const auto& r : refused) {
    ServiceSettings s;
    const std::string given =
        test::ErrorText([&] { SetServiceSettingFromText(s, r.name, r.text); });
    EXPECT_EQ(given, std::string("setting [Services] ") + r.name + " = \"" + r.text + "\" is not " +
                         r.bounds);
    test::WriteText(dir / "s.ini", std::string("[Services]\n") + r.name + "=" + r.text + "\n");
    const std::string stored =
        test::ErrorText([&] { ReadServiceSettings(MRegistry(dir / "s.ini")); });
    EXPECT_NE(stored.find(r.bounds), std::string::npos) << stored;
  }
  ServiceSettings s;
  SetServiceSettingFromText(s, "Timeout", "1");
  EXPECT_EQ(s.timeoutSeconds, 1);
  SetServiceSettingFromText(s, "Timeout", "3600");
  EXPECT_EQ(s.timeoutSeconds, 3600);
  SetServiceSettingFromText(s, "Pause", "0");
  EXPECT_EQ(s.pauseMilliseconds, 0);
}

}  // namespace
}  // namespace halvard::settings
