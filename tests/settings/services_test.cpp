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

}  // namespace
}  // namespace halvard::settings
