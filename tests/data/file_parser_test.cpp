#include "halvard/data/file_parser.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <memory>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/settings/config.h"
#include "test_support.h"

namespace halvard::data {
namespace {

using platform::FormatShortDate;
using test::PriceFile;
using test::TempDir;

constexpr const char* kDay = "2017-01-02,1,2,0.5,1,100";  // a plain day line

// Loads the text as a price file (or an index file) and returns the message of the
// halvard::Error that throws, the file's path cut off its front; or "no error".
std::string LoadError(const std::string& text, bool asIndex = false) {
  TempDir dir;
  const std::string path = (dir / "BAD.txt").string();
  test::WriteText(path, text);
  auto series = std::make_unique<PriceSeries>();
  try {
    asIndex ? LoadIndexFile(*series, path) : LoadStockFile(*series, path);
  } catch (const Error& e) {
    const std::string m = e.what();
    return m.rfind(path, 0) == 0 ? m.substr(path.size()) : "(path missing) " + m;
  }
  return "no error";
}

std::unique_ptr<PriceSeries> Load(const std::string& text) {
  TempDir dir;
  test::WriteText(dir / "OK.txt", text);
  auto s = std::make_unique<PriceSeries>();
  EXPECT_TRUE(LoadStockFile(*s, (dir / "OK.txt").string()));
  return s;
}

TEST(FileParser, ARealDailyHistoryFoundWithoutCaseThenAMissingFile) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "aal.txt").string()));  // AAL.txt
  EXPECT_EQ(s->stockSymbol, "aal");  // the symbol is the one asked for
  EXPECT_EQ(s->barCount, 252);
  // 2017-12-29,52.419998,52.82,52.009998,52.029999,2696300,52.029999
  EXPECT_EQ(FormatShortDate(s->barDate[0]), "12/29/2017");
  EXPECT_EQ(s->newestDate, s->barDate[0]);
  EXPECT_EQ((std::array{s->barOpen[0], s->barHigh[0], s->barLow[0], s->barClose[0]}),
            (std::array{52.419998, 52.82, 52.009998, 52.029999}));
  EXPECT_EQ(s->barVolume[0], 2696300);
  EXPECT_EQ(FormatShortDate(s->oldestDate), "12/30/2016");
  EXPECT_EQ(s->highestHigh, 54.48);    // 7/13/2017
  EXPECT_EQ(s->lowestLow, 39.209999);  // 3/22/2017

  // A missing file empties the series but leaves the old bars behind.
  EXPECT_FALSE(LoadStockFile(*s, (test::SamplePrices() / "NOPE.txt").string()));
  EXPECT_EQ(s->barCount, 0);
  EXPECT_EQ(s->stockSymbol, "NOPE");
  EXPECT_EQ(s->stockFilePath, (test::SamplePrices() / "NOPE.txt").string());
  EXPECT_EQ(s->barHigh[0], 52.82);  // AAL's newest day is still there
  EXPECT_EQ(s->highestHigh, 54.48);
}

TEST(FileParser, IndexVolumesBeyond32BitsLoad) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "^IXIC.txt").string()));
  EXPECT_EQ(s->barVolume[0], 1571730000);
  EXPECT_GT(s->maxVolume, INT32_MAX);
  EXPECT_GT(s->averageVolume, 1e9);
}

TEST(FileParser, AverageVolumeAddsTheOldest139BarsOver138) {
  EXPECT_EQ(Load(PriceFile({"2017-12-29,1,2,0.5,1.5,1380,1.5"}))->averageVolume, 10.0);
  std::vector<std::string> lines(61, "2017-01-02,1,2,0.5,1.5,1,1");  // the 61 newest days
  lines.resize(200, "2017-01-02,1,2,0.5,1.5,2,1");
  EXPECT_DOUBLE_EQ(Load(PriceFile(lines))->averageVolume, 139 * 2 / 138.0);
}

TEST(FileParser, TheFileLimitIs1001DayLines) {
  EXPECT_EQ(Load(PriceFile(std::vector<std::string>(1001, kDay)))->barCount, 1001);
  EXPECT_EQ(LoadError(PriceFile(std::vector<std::string>(1002, kDay))),
            " line 1003: more than 1001 day lines; a price file holds at most 1001 days");
}

TEST(FileParser, BadInputNamesTheFileTheLineAndTheProblem) {
  const struct {
    std::string text, error;
  } cases[] = {
      {PriceFile({kDay, "2017-01-02,1,2,3"}),
       " line 3: expected at least 6 comma-separated fields, found 4"},
      {PriceFile({"2017-01-02,1,2x,0.5,1,100"}), " line 2: the high \"2x\" is not a number"},
      {PriceFile({"2017-01-02,1,2,0.5,,100"}), " line 2: the close \"\" is not a number"},
      {PriceFile({"Jan 2 2017,1,2,0.5,1,100"}), " line 2: the date \"Jan 2 2017\" is not a date"},
      {PriceFile({"2017-01-02,1,2,0.5,1,lots"}), " line 2: the volume \"lots\" is not a number"},
      {PriceFile({}), ": no day lines after the header line"},
      {"", ": the file is empty"},
      // A blank line is a line, with one field.
      {PriceFile({kDay, ""}), " line 3: expected at least 6 comma-separated fields, found 1"},
      // A day that does not exist is an error even right after a good day of its month.
      {PriceFile({"2015-02-27,1,2,1,1,5", "2015-02-31,1,2,1,1,5"}),
       " line 3: the date \"2015-02-31\" is not a date"},
      {PriceFile({"2015-02-27,1,2,1,1,5", "2015-02-00,1,2,1,1,5"}),
       " line 3: the date \"2015-02-00\" is not a date"},
  };
  for (const auto& c : cases) EXPECT_EQ(LoadError(c.text), c.error) << c.text;
  // An index file needs five fields: the close is the fifth.
  EXPECT_EQ(LoadError(PriceFile({"2017-12-29,1,2,3,4,5", "2017-12-28,1,2,3"}), true),
            " line 3: expected at least 5 comma-separated fields, found 4");
}

// Numbers the engine would divide by, convert or add up beyond any range stop the load.
TEST(FileParser, PricesAndVolumesOutsideWhatTheyCanBeAreRefused) {
  const struct {
    std::string line, error;
  } cases[] = {
      {"2017-01-02,nan,2,0.5,1,100", " line 2: the open \"nan\" is not a finite number"},
      {"2017-01-02,1,inf,0.5,1,100", " line 2: the high \"inf\" is not a finite number"},
      {"2017-01-02,1,2,-infinity,1,100", " line 2: the low \"-infinity\" is not a finite number"},
      {"2017-01-02,1,2,0.5,1e999,100", " line 2: the close \"1e999\" is not a number"},
      {"2017-01-02,1,2,0.5,-0.01,100", " line 2: the close \"-0.01\" is below zero"},
      {"2017-01-02,1,2,0.5,1,-1", " line 2: the volume \"-1\" is below zero"},
      {"2017-01-02,1,2,0.5,1,1000000000000001",
       " line 2: the volume \"1000000000000001\" is beyond 10^15 shares"},
      {"2017-01-02,1,2,0.5,1,9223372036854775807",
       " line 2: the volume \"9223372036854775807\" is beyond 10^15 shares"},
      {"2017-01-02,1,2,0.5,1,nan", " line 2: the volume \"nan\" is not a number"},
  };
  for (const auto& c : cases) EXPECT_EQ(LoadError(PriceFile({c.line})), c.error) << c.line;
  EXPECT_EQ(LoadError(PriceFile({"2017-12-29,1,2,3,nan,5"}), true),
            " line 2: the close \"nan\" is not a finite number");
  // The largest volume allowed, 139 times over, still averages.
  const auto s =
      Load(PriceFile(std::vector<std::string>(139, "2017-01-02,1,2,0.5,1,1000000000000000")));
  EXPECT_EQ(s->averageVolume, 139e15 / 138);
  EXPECT_EQ(s->maxVolume, 1000000000000000);
}

TEST(FileParser, ReadsEveryDateFormAndLineEnd) {
  const auto s = Load(
      "Date,Open,High,Low,Close,Volume\r"
      "29-Dec-17, 1 ,2,0.5,1.5, 49650800.0 \n"
      "12/28/2017,1,2,0.5,1.5,100,1.5,extra\r\n"
      "2017-12-27,1,2,0.5,1.5,100");
  EXPECT_EQ(s->barCount, 3);
  EXPECT_EQ(s->barVolume[0], 49650800);
  EXPECT_EQ(s->barDate[0] - s->barDate[2], 2);
}

TEST(FileParser, SymbolsComeFromThePath) {
  EXPECT_EQ(SymbolOfPath("C:\\data\\XYZ.txt"), "XYZ");
  EXPECT_EQ(SymbolOfPath("/home/me/data/BRK.B.txt"), "BRK.B");
  EXPECT_EQ(SymbolOfPath("PLAIN"), "PLAIN");
  EXPECT_EQ(SymbolOfPath("C:\\a.b\\X"), "a");  // the cut at the last "." comes first
}

TEST(FileParser, IndexFileClosesAndTheMissingIndex) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadIndexFile(*s, (test::LongPrices() / "^ixic.txt").string()));
  EXPECT_TRUE(s->rsAvailable);
  EXPECT_EQ(s->indexClose[0], 6903.39);
  EXPECT_EQ(s->indexClose[4027], 1979.25);  // 4,028 days of closes, back to 1/2/2002
  EXPECT_EQ(s->indexClose[4028], 0);

  EXPECT_FALSE(LoadIndexFile(*s, "/nowhere/^IXIC.txt"));
  EXPECT_TRUE(s->rsAvailable);  // what was loaded stays available
}

TEST(FileParser, DaysAcrossMonthEndsAndLinesOutOfTheUsualShapeReadAsTheirFieldsSay) {
  // Newest first, across a leap day, two month ends and a year end; then lines whose fields are
  // not the plain form (signs, blanks, a fractional volume, more digits than a double holds
  // exactly, other date forms, more fields), between plain ones of the same month.
  const std::vector<std::string> dates = {"2016-03-02", "2016-03-01", "2016-02-29", "2016-02-28",
                                          "2016-01-31", "2016-01-01", "2015-12-31", "2015-12-28"};
  std::vector<std::string> lines;
  for (const std::string& d : dates) lines.push_back(d + ",10.5,11.25,9.125,10,1200");
  lines.push_back("2015-12-27,+1.5, 2.25 ,1,1.50,49650800.0");
  lines.push_back("12/26/2015,1.2345678901234567,2,1,2,0000000000000000100,x,y");
  lines.push_back("25-Dec-15,1.,2,.5,1,7");
  lines.push_back("2015-12-24,1,2,1,1,99");
  const auto s = Load(PriceFile(lines));
  ASSERT_EQ(s->barCount, 12);
  for (size_t i = 0; i < dates.size(); ++i) {
    EXPECT_EQ(s->barDate[i], platform::ParseDate(dates[i])) << dates[i];
    EXPECT_EQ(s->barHigh[i], 11.25);
    EXPECT_EQ(s->barVolume[i], 1200);
  }
  EXPECT_EQ(FormatShortDate(s->barDate[8]), "12/27/2015");
  EXPECT_EQ(s->barOpen[8], 1.5);
  EXPECT_EQ(s->barHigh[8], 2.25);
  EXPECT_EQ(s->barVolume[8], 49650800);
  EXPECT_EQ(FormatShortDate(s->barDate[9]), "12/26/2015");
  EXPECT_EQ(s->barOpen[9], 1.2345678901234567);
  EXPECT_EQ(s->barVolume[9], 100);
  EXPECT_EQ(FormatShortDate(s->barDate[10]), "12/25/2015");
  EXPECT_EQ(s->barOpen[10], 1.0);
  EXPECT_EQ(s->barLow[10], 0.5);
  EXPECT_EQ(FormatShortDate(s->barDate[11]), "12/24/2015");
}

}  // namespace
}  // namespace halvard::data
