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

TEST(Services, AProviderChainIsStoredInOrderAndEachNameChecked) {
  ServiceSettings s;
  EXPECT_EQ(SetServiceSettingFromText(s, "provider", " Chart , TIINGO ").text, "chart,tiingo");
  EXPECT_EQ(ProviderChain(s), (std::vector<std::string>{"chart", "tiingo"}));
  for (const char* refused : {"chart,", "chart,chart", "chart;tiingo", "chart,yahoo", ""}) {
    EXPECT_THROW(SetServiceSettingFromText(s, "Provider", refused), UsageError) << refused;
  }
  EXPECT_EQ(ProviderChain(s), (std::vector<std::string>{"chart", "tiingo"}));
  EXPECT_EQ(SetServiceSettingFromText(s, "Fundamentals", "SUMMARY").text, "summary");
  EXPECT_THROW(SetServiceSettingFromText(s, "Fundamentals", "yahoo"), UsageError);
}

// The contact goes into a request header: a name and an e-mail address on one line.
TEST(Services, TheContactIsANameWithAnEmailAddress) {
  ServiceSettings s;
  EXPECT_EQ(SetServiceSettingFromText(s, "Contact", " Jane Doe jane@example.com ").text,
            "Jane Doe jane@example.com");
  for (const char* refused : {"jane@example.com", "Jane Doe", "Jane jane@", "Jane @example.com",
                              "Jane jane@example.com\r\nX-Evil: 1", "Jane\tjane@example.com"}) {
    EXPECT_THROW(SetServiceSettingFromText(s, "Contact", refused), UsageError) << refused;
  }
  EXPECT_EQ(s.contact, "Jane Doe jane@example.com");
}

// What config show lists is what the file holds: every value written as listed reads back the
// same settings.
TEST(Services, EveryValueListedReadsBackFromTheFile) {
  test::TempDir dir;
  ServiceSettings changed;
  SetServiceSettingFromText(changed, "Provider", "stooq,chart");
  SetServiceSettingFromText(changed, "Stooq Key", "abc");
  SetServiceSettingFromText(changed, "Retry Wait", "2.5");
  SetServiceSettingFromText(changed, "Contact", "Jo Bloggs jo@example.org");
  const MRegistry store(dir / "s.ini");
  std::vector<StoredValue> values;
  for (const ServiceText& v : ServiceSettingsAsText(changed)) {
    values.push_back({std::string(kServicesSection), v.name, v.text});
  }
  store.SaveStrings(kAppName, values);
  const auto read = ServiceSettingsAsText(ReadServiceSettings(MRegistry(dir / "s.ini")));
  const auto listed = ServiceSettingsAsText(changed);
  ASSERT_EQ(read.size(), listed.size());
  for (size_t i = 0; i < read.size(); ++i) {
    EXPECT_EQ(read[i].name, listed[i].name);
    EXPECT_EQ(read[i].text, listed[i].text) << read[i].name;
  }
  EXPECT_EQ(GetServiceSettingText(changed, "stooq key").text, "abc");
  EXPECT_THROW(GetServiceSettingText(changed, "Stooq Token"), UsageError);
}

// Keys live in the settings file: a new file is its owner's alone, and an existing one that
// others could read is tightened once it holds a key, with a warning.
TEST(Services, ASettingsFileHoldingAKeyIsReadableByItsOwnerAlone) {
  test::TempDir dir;
  const auto mode = [&](const char* name) {
    return std::filesystem::status(dir / name).permissions() & std::filesystem::perms::all;
  };
  using std::filesystem::perms;
  MRegistry(dir / "new.ini").SaveString(kAppName, "Services", "Tiingo Token", "t");
  EXPECT_EQ(mode("new.ini"), perms::owner_read | perms::owner_write);

  test::WriteText(dir / "old.ini", "[Services]\r\nProvider=chart\r\n");
  std::filesystem::permissions(dir / "old.ini", perms::owner_read | perms::owner_write |
                                                    perms::group_read | perms::others_read);
  EXPECT_EQ(ProtectServiceKeys(MRegistry(dir / "old.ini")), "");
  EXPECT_NE(mode("old.ini") & perms::others_read, perms::none);
  MRegistry(dir / "old.ini").SaveString(kAppName, "Services", "Stooq Key", "k");
  EXPECT_EQ(ProtectServiceKeys(MRegistry(dir / "old.ini")),
            "the settings file " + (dir / "old.ini").string() +
                " holds a service key and others could read it: it is now readable by you "
                "alone (mode 0600)");
  EXPECT_EQ(mode("old.ini"), perms::owner_read | perms::owner_write);
  EXPECT_EQ(ProtectServiceKeys(MRegistry(dir / "old.ini")), "");
}

}  // namespace
}  // namespace halvard::settings
