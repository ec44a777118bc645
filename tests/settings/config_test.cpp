#include "halvard/settings/config.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "test_support.h"

namespace halvard::settings {
namespace {

using test::ReadText;
using test::TempDir;
using test::WriteText;

TEST(Config, WriteConfigStoresEverySettingInTableOrderAndReadsItBack) {
  TempDir dir;
  Config c;
  c.StockFilePath = "/home/me/prices";
  c.IncFilePath = "";
  c.ReportFilePath = "/home/me/reports";
  c.downloadTime.serial = 17.5 / 24;
  c.downloadDate.serial = *platform::ParseDate("2024-03-05");
  c.enableAutoDownload = true;
  c.downloadLists = "sample.inc,tech.inc";
  c.windowHeight = -3;
  c.buyMode = 2;
  c.unusualVolumePercentage = 0.123456789012345;
  c.stopLossLimit = 0.1 + 0.2;
  c.enableGraphUpdate = false;
  c.EPSRankScanPercentage = 15;
  const MRegistry store(dir / "s.ini");
  c.WriteConfig(store);
  EXPECT_EQ(ReadText(dir / "s.ini"),
            "[Paths]\r\nStock File Path=/home/me/prices\r\nInc File Path=\r\n"
            "Report File Path=/home/me/reports\r\n\r\n"
            "[Download]\r\nTime=5:30:00 PM\r\nDate=3/5/2024\r\nEnabled=True\r\n"
            "Lists=sample.inc,tech.inc\r\n\r\n"
            "[View]\r\nShowRS=False\r\nCurrent=4\r\nHeight=-3\r\nWidth=12255\r\n\r\n"
            "[Batch]\r\nRS Days=10\r\nRS Check=True\r\nUse Unusual Volume=True\r\nBuyMode=2\r\n"
            "Unusual Volume Percentage=0.123456789012345\r\nStop Loss Limit=0.30000000000000004\r\n"
            "Jobs=0\r\n\r\n"
            "[Scans]\r\n52 Week Period=12\r\nX Week Period=12\r\nX Week Quantity=4\r\n"
            "Box scan Period=12\r\nEnable Graph Update=False\r\nRank Scan Percentage=15\r\n"
            "RS Rank Scan Percentage=20\r\n");
  // What is written reads back as it was; the empty Inc File Path is a value, not a missing one.
  Config back;
  back.ReadConfig(store);
  back.WriteConfig(MRegistry(dir / "back.ini"));
  EXPECT_EQ(ReadText(dir / "back.ini"), ReadText(dir / "s.ini"));
}

// The default texts themselves are pinned by the command-line test of "config show".
TEST(Config, StoredTextIsReadAsTheUserWroteItAndMissingTextGivesTheDefault) {
  TempDir dir;
  WriteText(
      dir / "s.ini",
      "[Batch]\nUse Unusual Volume=tRuE\nRS Days=7.5\nBuyMode=2.5\n"
      "[Download]\nTime=16:30\nDate=2017-12-29\nEnabled=-1\n[Scans]\nEnable Graph Update=0\n");
  Config c;
  c.useUnusualVolume = c.rsCheckEnabled = false;  // to be turned on: RS Check's default is "10"
  c.currentView = 1;
  c.ReadConfig(MRegistry(dir / "s.ini"));
  EXPECT_TRUE(c.useUnusualVolume);
  EXPECT_TRUE(c.rsCheckEnabled);
  EXPECT_EQ(c.currentView, 4);
  EXPECT_EQ(c.rsDayCurr, 8);  // halves round to even
  EXPECT_EQ(c.buyMode, 2);
  EXPECT_DOUBLE_EQ(c.downloadTime.serial, 16.5 / 24);
  EXPECT_EQ(c.downloadDate.serial, 43098);
  EXPECT_TRUE(c.enableAutoDownload);
  EXPECT_FALSE(c.enableGraphUpdate);
}

TEST(Config, ATextThatDoesNotConvertNamesSectionValueAndText) {
  TempDir dir;
  const struct {
    const char* file;
    const char* expected;
  } cases[] = {
      {"[Batch]\nStop Loss Limit=1/8\n",
       "[Batch] Stop Loss Limit = \"1/8\" is not a finite number"},
      {"[Batch]\nStop Loss Limit=inf\n",
       "[Batch] Stop Loss Limit = \"inf\" is not a finite number"},
      {"[Batch]\nUnusual Volume Percentage=nan\n",
       "[Batch] Unusual Volume Percentage = \"nan\" is not a finite number"},
      {"[Batch]\nStop Loss Limit=1.79769313486232E+308\n",
       "[Batch] Stop Loss Limit = \"1.79769313486232E+308\" is not a finite number"},
      {"[View]\nCurrent=40000\n", "[View] Current = \"40000\" is not a whole number"},
      {"[View]\nShowRS=yes\n", "[View] ShowRS = \"yes\" is not True, False or a number"},
      {"[Download]\nDate=someday\n", "[Download] Date = \"someday\" is not a date"},
  };
  for (const auto& c : cases) {
    WriteText(dir / "s.ini", c.file);
    Config config;
    const std::string error = test::ErrorText([&] { config.ReadConfig(MRegistry(dir / "s.ini")); });
    EXPECT_NE(error.find(c.expected), std::string::npos) << error;
    EXPECT_NE(error.find("s.ini"), std::string::npos) << error;
  }
}

// One value that does not convert costs nothing else: the later values are read, the error says
// what was kept, and writing the settings back leaves the user's own text until the value is
// changed in this run.
TEST(Config, AValueThatDoesNotConvertIsKeptAsTheUserWroteIt) {
  TempDir dir;
  WriteText(dir / "s.ini",
            "[View]\nCurrent=abc\n[Batch]\nBuyMode=2\nStop Loss Limit=0.5\n"
            "[Scans]\n52 Week Period=30\n");
  const MRegistry store(dir / "s.ini");
  Config c;
  const std::string error = test::ErrorText([&] { c.ReadConfig(store); });
  EXPECT_NE(error.find("[View] Current = \"abc\" is not a whole number"), std::string::npos);
  EXPECT_NE(error.find("the default 4 is used, and \"abc\" stays in the file"), std::string::npos)
      << error;
  EXPECT_EQ(c.currentView, 4);
  EXPECT_EQ(c.buyMode, 2);
  EXPECT_EQ(c.stopLossLimit, 0.5);
  EXPECT_EQ(c.period52week, 30);

  c.WriteConfig(store);
  const std::string written = ReadText(dir / "s.ini");
  for (const char* line :
       {"Current=abc\r\n", "BuyMode=2\r\n", "Stop Loss Limit=0.5\r\n", "52 Week Period=30\r\n"}) {
    EXPECT_NE(written.find(line), std::string::npos) << line << " in\n" << written;
  }
  c.currentView = 5;  // the user chose a view: that is what is stored now
  c.WriteConfig(store);
  EXPECT_NE(ReadText(dir / "s.ini").find("Current=5\r\n"), std::string::npos);
}

// A folder given on the command line is for the run: the stored one is written back, unless the
// user changed the folder afterwards.
TEST(Config, AValueSetForThisRunIsNotWrittenBack) {
  TempDir dir;
  WriteText(dir / "s.ini", "[Paths]\nStock File Path=/home/me/prices\n[View]\nCurrent=x\n");
  const MRegistry store(dir / "s.ini");
  Config c;
  EXPECT_THROW(c.ReadConfig(store), Error);
  SetForThisRun(c, "Paths", "Stock File Path", "/tmp/copy");
  SetForThisRun(c, "View", "Current", "2");
  EXPECT_EQ(c.StockFilePath, "/tmp/copy");
  EXPECT_EQ(c.currentView, 2);
  c.WriteConfig(store);
  std::string written = ReadText(dir / "s.ini");
  EXPECT_NE(written.find("Stock File Path=/home/me/prices\r\n"), std::string::npos) << written;
  EXPECT_NE(written.find("Current=x\r\n"), std::string::npos) << written;
  c.StockFilePath = "/home/me/other";
  c.WriteConfig(store);
  written = ReadText(dir / "s.ini");
  EXPECT_NE(written.find("Stock File Path=/home/me/other\r\n"), std::string::npos) << written;
}

// Names as the table spells them come back from "config set" in the command-line test.
TEST(Config, SettingsByNameForTheCommandLine) {
  Config c;
  EXPECT_EQ(SetSettingFromText(c, "batch", "stop loss limit", " 0.5 ").text, "0.5");
  EXPECT_EQ(c.stopLossLimit, 0.5);
  EXPECT_EQ(SetSettingFromText(c, "Download", "Date", "2024-03-05").text, "3/5/2024");
  EXPECT_EQ(GetSettingText(c, "SCANS", "rank scan percentage").text, "20");
  EXPECT_THROW(GetSettingText(c, "Paths", "Nowhere"), UsageError);
  EXPECT_THROW(SetSettingFromText(c, "View", "Current", "four"), UsageError);
  EXPECT_EQ(c.currentView, 4);  // a refused text changes nothing
}

// A stored value that does not read back would stop every later run, the repair included.
TEST(Config, SetStoresOnlyWhatReadsBackExactly) {
  TempDir dir;
  const MRegistry store(dir / "s.ini");
  Config c;
  EXPECT_EQ(SetSettingFromText(c, "Batch", "Stop Loss Limit", "1.7976931348623157e308").text,
            "1.7976931348623157E+308");
  EXPECT_EQ(SetSettingFromText(c, "Batch", "Unusual Volume Percentage", "0.1").text, "0.1");
  c.WriteConfig(store);
  Config back;
  back.ReadConfig(MRegistry(dir / "s.ini"));
  EXPECT_EQ(back.stopLossLimit, 1.7976931348623157e308);

  for (const char* text : {"inf", "-inf", "nan", "1e400"}) {
    EXPECT_THROW(SetSettingFromText(c, "Batch", "Stop Loss Limit", text), UsageError) << text;
  }
  const std::string broken = test::ErrorText(
      [&] { SetSettingFromText(c, "Paths", "Stock File Path", "/data\n[View]\nCurrent=9"); });
  EXPECT_EQ(broken,
            "setting [Paths] Stock File Path = \"/data\\n[View]\\nCurrent=9\" would not read back "
            "from the settings file as it was given");
  EXPECT_THROW(SetSettingFromText(c, "Paths", "Inc File Path", "dword:0000000a"), UsageError);
  EXPECT_THROW(SetSettingFromText(c, "Paths", "Inc File Path", " /lists"), UsageError);
  EXPECT_EQ(c.stopLossLimit, 1.7976931348623157e308);  // nothing refused was kept
}

// Each command reads some thirty values: the file is read and parsed once for all of them.
TEST(Config, TheFileIsReadOnceAndItsCopiesShareWhatWasRead) {
  TempDir dir;
  WriteText(dir / "s.ini", "[Batch]\nBuyMode=2\n");
  const MRegistry store(dir / "s.ini");
  const MRegistry copy = store;
  Config c;
  c.ReadConfig(store);
  std::filesystem::remove(dir / "s.ini");
  c.buyMode = 1;
  c.ReadConfig(copy);
  EXPECT_EQ(c.buyMode, 2);
  // A write reads the file again and is seen by every later read.
  WriteText(dir / "s.ini", "; kept\n[Batch]\nBuyMode=3\n");
  store.SaveString(kAppName, "View", "Current", "2");
  c.ReadConfig(copy);
  EXPECT_EQ(c.buyMode, 3);
  EXPECT_EQ(c.currentView, 2);
  EXPECT_EQ(ReadText(dir / "s.ini"),
            "; kept\r\n[Batch]\r\nBuyMode=3\r\n\r\n[View]\r\nCurrent=2\r\n");
}

}  // namespace
}  // namespace halvard::settings
