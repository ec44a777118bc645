#include "halvard/settings/registry.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::settings {
namespace {

using test::ReadText;
using test::TempDir;
using test::WriteText;

// The message and number of the store error that fn throws.
template <class Fn>
std::pair<std::string, int> ErrorOf(Fn fn) {
  try {
    fn();
  } catch (const RegistryError& e) {
    return {e.what(), e.number()};
  }
  return {"no error", 0};
}

TEST(Registry, ReadingMatchesNamesWithoutCaseOrSpacesAndFallsBackOnTheDefault) {
  TempDir dir;
  WriteText(dir / "s.ini", "; my settings\n[ batch ]\n  rs days =  7 \n# note\n\nBuyMode=2");
  const MRegistry store(dir / "s.ini");
  EXPECT_EQ(store.GetString(kAppName, "Batch", "RS Days", ""), "7");
  EXPECT_EQ(store.GetString(kAppName, "BATCH", "buymode", ""), "2");
  EXPECT_EQ(store.GetString(kAppName, "View", "Current", "4"), "4");      // no such section
  EXPECT_EQ(store.GetString(kAppName, "Batch", "RS Check", "10"), "10");  // no such value
  const MRegistry none(dir / "none" / "settings.ini");
  EXPECT_EQ(none.GetString(kAppName, "Paths", "Stock File Path", "dflt"), "dflt");
}

TEST(Registry, SavingKeepsEverythingElseOfTheFileOrMakesTheFileAndItsFolder) {
  TempDir dir;
  WriteText(dir / "s.ini",
            "; comment\r\n[Paths]\r\nStock File Path=/a\r\n\r\n[Services]\r\nProvider=chart\r\n");
  const MRegistry store(dir / "s.ini");
  store.SaveString(kAppName, "paths", "stock file path", "/b");
  store.SaveString(kAppName, "Paths", "Inc File Path", "/c");
  store.SaveString(kAppName, "View", "Current", "5");
  EXPECT_EQ(ReadText(dir / "s.ini"),
            "; comment\r\n[Paths]\r\nstock file path=/b\r\nInc File Path=/c\r\n\r\n"
            "[Services]\r\nProvider=chart\r\n\r\n[View]\r\nCurrent=5\r\n");
  const MRegistry fresh(dir / "deep" / "er" / "settings.ini");
  fresh.SaveStrings(kAppName, {{"Paths", "Stock File Path", "/x=y"}, {"View", "ShowRS", "True"}});
  EXPECT_EQ(ReadText(dir / "deep" / "er" / "settings.ini"),
            "[Paths]\r\nStock File Path=/x=y\r\n\r\n[View]\r\nShowRS=True\r\n");
  EXPECT_EQ(fresh.GetString(kAppName, "Paths", "Stock File Path", ""), "/x=y");
}

TEST(Registry, EmptyNamesAreRefusedWithTheirMessages) {
  TempDir dir;
  const MRegistry store(dir / "s.ini");
  EXPECT_EQ(ErrorOf([&] { store.SaveString("", "A", "B", "v"); }).first,
            "AppName may not be empty");
  EXPECT_EQ(ErrorOf([&] { store.GetString(kAppName, "", "B", ""); }).first,
            "Section may not be empty");
  EXPECT_EQ(ErrorOf([&] { store.SaveString(kAppName, "A", "", "v"); }).first,
            "Key may not be empty");
  EXPECT_FALSE(std::filesystem::exists(dir / "s.ini"));
}

TEST(Registry, AValueOfAnotherTypeIsNotAString) {
  TempDir dir;
  WriteText(dir / "s.ini", "[Batch]\nRS Days=dword:0000000a\nBuyMode=hex:01,00\nRS Check=dword\n");
  const MRegistry store(dir / "s.ini");
  const auto [message, number] =
      ErrorOf([&] { store.GetString(kAppName, "Batch", "RS Days", ""); });
  EXPECT_EQ(message.rfind("Registry data not a string: [Batch] RS Days", 0), 0u) << message;
  EXPECT_EQ(number, kObjectErrorBase + 2000);
  EXPECT_EQ(ErrorOf([&] { store.GetString(kAppName, "Batch", "BuyMode", ""); }).second,
            kObjectErrorBase + 2000);
  EXPECT_EQ(store.GetString(kAppName, "Batch", "RS Check", ""), "dword");  // plain text
}

TEST(Registry, ABrokenFileIsReportedWithItsLine) {
  TempDir dir;
  WriteText(dir / "s.ini", "[Batch]\nBuyMode=1\nthis line means nothing\n");
  const MRegistry store(dir / "s.ini");
  const std::string message =
      ErrorOf([&] { store.GetString(kAppName, "Batch", "BuyMode", ""); }).first;
  EXPECT_EQ(message.rfind("Could not open registry section", 0), 0u) << message;
  EXPECT_NE(message.find("s.ini line 3"), std::string::npos) << message;
  // Saving never overwrites a file it could not understand.
  EXPECT_EQ(ErrorOf([&] {
              store.SaveString(kAppName, "Batch", "BuyMode", "2");
            }).first.rfind("Could not open/create registry section", 0),
            0u);
  EXPECT_EQ(ReadText(dir / "s.ini"), "[Batch]\nBuyMode=1\nthis line means nothing\n");
}

// A store over text in memory reads and writes as one over a file would, and touches no disk.
TEST(Registry, AStoreInMemoryReadsAndWritesItsTextAsTheFile) {
  TempDir dir;
  const MRegistry store = MRegistry::InMemory("; mine\n[Batch]\nBuyMode=1\n", dir / "s.ini");
  EXPECT_EQ(store.GetString(kAppName, "batch", "buymode", ""), "1");
  const MRegistry copy = store;
  copy.SaveStrings(kAppName, {{"Batch", "RS Days", "7"}, {"View", "Current", "2"}});
  EXPECT_EQ(store.MemoryText(),
            "; mine\r\n[Batch]\r\nBuyMode=1\r\nRS Days=7\r\n\r\n[View]\r\nCurrent=2\r\n");
  EXPECT_EQ(store.GetString(kAppName, "View", "Current", ""), "2");
  EXPECT_FALSE(std::filesystem::exists(dir / "s.ini"));

  const MRegistry broken = MRegistry::InMemory("[Batch]\nnothing\n", dir / "s.ini");
  const std::string message =
      ErrorOf([&] { broken.GetString(kAppName, "Batch", "BuyMode", ""); }).first;
  EXPECT_NE(message.find("s.ini line 2: expected"), std::string::npos) << message;
}

TEST(Registry, AFolderThatCannotBeWrittenFailsTheSave) {
  TempDir dir;
  WriteText(dir / "file", "");
  const MRegistry store(dir / "file" / "settings.ini");  // a file where the folder should be
  const auto [message, number] = ErrorOf([&] { store.SaveString(kAppName, "A", "B", "v"); });
  EXPECT_EQ(message.rfind("Could not open/create registry section", 0), 0u) << message;
  EXPECT_EQ(number, kErrorCannotCreate);
}

}  // namespace
}  // namespace halvard::settings
