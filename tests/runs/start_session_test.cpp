#include "halvard/runs/start_session.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "halvard/data/file_parser.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

namespace fs = std::filesystem;
using Kind = StartNote::Kind;

class StartSessionTest : public ::testing::Test {
 protected:
  StartSessionTest() {
    fs::create_directories(dir / "prices");
    fs::create_directories(dir / "lists");
  }

  // A settings file naming the scratch folders, with RS turned off, other RS days stored, and
  // the [Batch] lines given.
  void StoreSettings(const std::string& batch = "") {
    test::WriteText(dir / "settings.ini",
                    "[Paths]\nStock File Path=" + (dir / "prices").string() +
                        "\nInc File Path=" + (dir / "lists").string() +
                        "\n[View]\nShowRS=False\n[Batch]\nRS Days=30\nRS Check=False\n" + batch);
  }

  void CopyIndex() {
    fs::copy_file(test::SamplePrices() / "^IXIC.txt", dir / "prices" / "^IXIC.txt");
  }

  StartReport Start(const StartRequest& request) { return StartSession(s, request); }

  test::TempDir dir;
  Session s{SettingsStoreAt(dir / "settings.ini")};
};

TEST_F(StartSessionTest, StartUpForcesTheRsValuesOverTheStoredOnesAndLoadsTheIndex) {
  StoreSettings();
  CopyIndex();
  const StartReport report = Start({});
  EXPECT_TRUE(report.notes.empty());
  EXPECT_TRUE(report.indexLoaded);
  EXPECT_FALSE(report.indexMissing);
  EXPECT_TRUE(s.config.showRS);
  EXPECT_TRUE(s.config.rsCheckEnabled);
  EXPECT_EQ(s.config.rsDayCurr, 10);
  EXPECT_EQ(s.config.StockFilePath, (dir / "prices").string());
}

TEST_F(StartSessionTest, WithoutStartUpTheStoredValuesStandAndNoIndexIsRead) {
  StoreSettings();
  const StartReport report = Start({.startUp = false});
  EXPECT_FALSE(report.indexMissing);  // nobody looked for it
  EXPECT_FALSE(s.config.showRS);
  EXPECT_EQ(s.config.rsDayCurr, 30);
}

TEST_F(StartSessionTest, AMissingIndexIsReportedAndTurnsRsOff) {
  StoreSettings();
  const StartReport report = Start({});
  EXPECT_TRUE(report.notes.empty());
  EXPECT_FALSE(report.indexLoaded);
  EXPECT_TRUE(report.indexMissing);
  EXPECT_FALSE(s.config.showRS);
}

TEST_F(StartSessionTest, FoldersGivenForThisRunAreUsedButNotStored) {
  StoreSettings();
  fs::create_directories(dir / "other");
  fs::copy_file(test::SamplePrices() / "^IXIC.txt", dir / "other" / "^IXIC.txt");
  const StartReport report =
      Start({.stockDir = (dir / "other").string(), .listDir = (dir / "other").string()});
  EXPECT_TRUE(report.indexLoaded);  // from the folder given, not the stored one
  EXPECT_EQ(s.config.IncFilePath, (dir / "other").string());
  s.WriteSettings();
  const std::string stored = test::ReadText(dir / "settings.ini");
  EXPECT_NE(stored.find("Stock File Path=" + (dir / "prices").string() + "\r\n"), std::string::npos)
      << stored;
}

TEST_F(StartSessionTest, ARefusedIndexIsThrownUnlessItMayFail) {
  StoreSettings();
  test::WriteText(dir / "prices" / "^IXIC.txt", test::PriceFile({"2017-12-29,1,2,1,x,100"}));
  EXPECT_THROW(Start({}), data::PriceFileError);
  const StartReport report = Start({.indexMayFail = true});
  ASSERT_EQ(report.notes.size(), 1u);
  EXPECT_EQ(report.notes[0].kind, Kind::kProblem);
  EXPECT_NE(report.notes[0].text.find("^IXIC.txt line 2"), std::string::npos)
      << report.notes[0].text;
  EXPECT_FALSE(report.indexLoaded);
  EXPECT_FALSE(report.indexMissing);  // there is a file: it needs mending, not fetching
}

TEST_F(StartSessionTest, AFailingStepStopsTheStartUnlessItCarriesOn) {
  StoreSettings("Jobs=many\n");
  CopyIndex();
  EXPECT_THROW(Start({}), Error);
  // Carrying on, the bad value is said first, and a folder that is not there next; the steps
  // after them still run.
  const StartReport report =
      Start({.listDir = (dir / "gone").string(), .openStores = true, .carryOn = true});
  ASSERT_EQ(report.notes.size(), 2u) << report.notes[0].text;
  EXPECT_EQ(report.notes[0].kind, Kind::kProblem);
  EXPECT_NE(report.notes[0].text.find("many"), std::string::npos) << report.notes[0].text;
  EXPECT_NE(report.notes[1].text.find("watch-list folder"), std::string::npos)
      << report.notes[1].text;
  EXPECT_TRUE(report.indexLoaded);
}

TEST_F(StartSessionTest, AFirstRunFillsTheDefaultFoldersWithTheSamplesBeforeTheIndexLoads) {
  const char* old = std::getenv("XDG_DATA_HOME");
  const std::string kept = old != nullptr ? old : "";
  setenv("XDG_DATA_HOME", (dir / "home").c_str(), 1);
  const StartReport report = Start({.samples = test::SamplePrices().parent_path()});
  old != nullptr ? setenv("XDG_DATA_HOME", kept.c_str(), 1) : unsetenv("XDG_DATA_HOME");
  ASSERT_EQ(report.notes.size(), 1u);
  EXPECT_EQ(report.notes[0].kind, Kind::kSamplesCopied);
  EXPECT_EQ(
      report.notes[0].text.rfind("created the stock files folder " +
                                     (dir / "home" / "halvard600" / "data").string() + " with ",
                                 0),
      0u)
      << report.notes[0].text;
  EXPECT_TRUE(report.indexLoaded);
}

}  // namespace
}  // namespace halvard::runs
