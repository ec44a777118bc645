#include "halvard/data/file_parser.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/settings/config.h"
#include "test_support.h"

namespace halvard::data {
namespace {

namespace fs = std::filesystem;
using platform::FormatShortDate;
using test::PriceFile;
using test::TempDir;
using test::WriteText;

std::string DayLine(int n) {  // a plain day line; n only makes the lines differ
  return "2017-01-" + std::to_string(1 + n % 28) + "," + std::to_string(10 + n) + ",12,9,11," +
         std::to_string(1000 + n) + ",11";
}

std::vector<std::string> DayLines(int count) {
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i) lines.push_back(DayLine(i));
  return lines;
}

// The message of the halvard::Error that loading the text as a price file throws.
std::string LoadError(const std::string& text) {
  TempDir dir;
  WriteText(dir / "BAD.txt", text);
  auto series = std::make_unique<PriceSeries>();
  try {
    LoadStockFile(*series, (dir / "BAD.txt").string());
  } catch (const Error& e) {
    const std::string m = e.what();
    const std::string where = (dir / "BAD.txt").string();
    return m.rfind(where, 0) == 0 ? m.substr(where.size()) : "(path missing) " + m;
  }
  return "no error";
}

TEST(FileParser, LoadsARealDailyHistory) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "AAL.txt").string()));
  EXPECT_EQ(s->stockSymbol, "AAL");
  EXPECT_EQ(s->barCount, 252);
  // 2017-12-29,52.419998,52.82,52.009998,52.029999,2696300,52.029999
  EXPECT_EQ(FormatShortDate(s->barDate[0]), "12/29/2017");
  EXPECT_EQ(s->barOpen[0], 52.419998);
  EXPECT_EQ(s->barHigh[0], 52.82);
  EXPECT_EQ(s->barLow[0], 52.009998);
  EXPECT_EQ(s->barClose[0], 52.029999);
  EXPECT_EQ(s->barVolume[0], 2696300);
  EXPECT_EQ(s->newestDate, s->barDate[0]);
  EXPECT_EQ(FormatShortDate(s->oldestDate), "12/30/2016");
  EXPECT_EQ(s->highestHigh, 54.48);    // 7/13/2017
  EXPECT_EQ(s->lowestLow, 39.209999);  // 3/22/2017
}

TEST(FileParser, IndexVolumesBeyond32BitsLoad) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "^IXIC.txt").string()));
  EXPECT_EQ(s->barCount, 252);
  EXPECT_EQ(s->barVolume[0], 1571730000);
  EXPECT_GT(s->maxVolume, INT32_MAX);
  EXPECT_GT(s->averageVolume, 1e9);
}

TEST(FileParser, OneDayLine) {
  TempDir dir;
  WriteText(dir / "ONE.txt", PriceFile({"2017-12-29,1,2,0.5,1.5,1380,1.5"}));
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (dir / "ONE.txt").string()));
  EXPECT_EQ(s->barCount, 1);
  EXPECT_EQ(s->newestDate, s->oldestDate);
  EXPECT_EQ(s->averageVolume, 10.0);  // 1380 / 138
  EXPECT_EQ(s->highestHigh, 2);
  EXPECT_EQ(s->lowestLow, 0.5);
  EXPECT_EQ(s->maxVolume, 1380);
}

TEST(FileParser, AverageVolumeAddsTheOldest139BarsOver138) {
  TempDir dir;
  std::vector<std::string> lines;
  for (int i = 0; i < 200; ++i) {  // newest first: volume 1 on the 61 newest days, 2 after
    lines.push_back("2017-01-02,1,2,0.5,1.5," + std::string(i < 61 ? "1" : "2") + ",1");
  }
  WriteText(dir / "V.txt", PriceFile(lines));
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (dir / "V.txt").string()));
  EXPECT_DOUBLE_EQ(s->averageVolume, 139 * 2 / 138.0);
}

TEST(FileParser, TheFileLimitIs1001DayLines) {
  TempDir dir;
  WriteText(dir / "MAX.txt", PriceFile(DayLines(1001)));
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (dir / "MAX.txt").string()));
  EXPECT_EQ(s->barCount, 1001);
  EXPECT_EQ(LoadError(PriceFile(DayLines(1002))),
            " line 1003: more than 1001 day lines; a price file holds at most 1001 days");
  // The long index history is an ordinary file too big to load as a symbol.
  EXPECT_THROW(LoadStockFile(*s, (test::LongPrices() / "^IXIC.txt").string()), Error);
}

TEST(FileParser, BadInputNamesTheFileTheLineAndTheProblem) {
  EXPECT_EQ(LoadError(PriceFile({DayLine(0), "2017-01-02,1,2,3"})),
            " line 3: expected at least 6 comma-separated fields, found 4");
  EXPECT_EQ(LoadError(PriceFile({"2017-01-02,1,2x,0.5,1,100"})),
            " line 2: the high \"2x\" is not a number");
  EXPECT_EQ(LoadError(PriceFile({"2017-01-02,1,2,0.5,,100"})),
            " line 2: the close \"\" is not a number");
  EXPECT_EQ(LoadError(PriceFile({"Jan 2 2017,1,2,0.5,1,100"})),
            " line 2: the date \"Jan 2 2017\" is not a date");
  EXPECT_EQ(LoadError(PriceFile({"2017-01-02,1,2,0.5,1,lots"})),
            " line 2: the volume \"lots\" is not a number");
  EXPECT_EQ(LoadError(PriceFile({})), ": no day lines after the header line");
  EXPECT_EQ(LoadError(""), ": the file is empty");
  // A blank line is a line, with one field.
  EXPECT_EQ(LoadError(PriceFile({DayLine(0), ""})),
            " line 3: expected at least 6 comma-separated fields, found 1");
}

TEST(FileParser, ReadsEveryDateFormAndLineEnd) {
  TempDir dir;
  WriteText(dir / "F.txt",
            "Date,Open,High,Low,Close,Volume\r"
            "29-Dec-17, 1 ,2,0.5,1.5, 49650800.0 \n"
            "12/28/2017,1,2,0.5,1.5,100,1.5,extra\r\n"
            "2017-12-27,1,2,0.5,1.5,100");
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (dir / "F.txt").string()));
  EXPECT_EQ(s->barCount, 3);
  EXPECT_EQ(s->barVolume[0], 49650800);
  EXPECT_EQ(s->barDate[0] - s->barDate[2], 2);
}

TEST(FileParser, AMissingFileLeavesTheOldBarsBehind) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "AAL.txt").string()));
  EXPECT_FALSE(LoadStockFile(*s, (test::SamplePrices() / "NOPE.txt").string()));
  EXPECT_EQ(s->barCount, 0);
  EXPECT_EQ(s->stockSymbol, "NOPE");
  EXPECT_EQ(s->stockFilePath, (test::SamplePrices() / "NOPE.txt").string());
  EXPECT_EQ(s->barHigh[0], 52.82);  // AAL's newest day is still there
  EXPECT_EQ(s->highestHigh, 54.48);
}

TEST(FileParser, FileNamesMatchWithoutCase) {
  auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(LoadStockFile(*s, (test::SamplePrices() / "aal.txt").string()));
  EXPECT_EQ(s->stockSymbol, "aal");  // the symbol is the one asked for
  EXPECT_EQ(s->barCount, 252);
}

TEST(FileParser, SymbolsComeFromThePath) {
  EXPECT_EQ(GetSymbol("C:\\data\\XYZ.txt"), "XYZ");
  EXPECT_EQ(GetSymbol("/home/me/data/BRK.B.txt"), "BRK.B");
  EXPECT_EQ(GetSymbol("PLAIN"), "PLAIN");
  EXPECT_EQ(GetSymbol("C:\\a.b\\X"), "a");  // the cut at the last "." comes first
  EXPECT_EQ(GetSymbol("/x/^IXIC.txt"), "^IXIC");
}

TEST(FileParser, ExtremesOnTiesTakeTheNewestDay) {
  const std::array<double, 5> highs = {3, 5, 5, 1, 5};
  int at = -1;
  EXPECT_EQ(GetMax<double>(highs, 5, at), 5);
  EXPECT_EQ(at, 1);
  EXPECT_EQ(GetMax<double>(highs, 1, at), 3);
  EXPECT_EQ(at, 0);
  EXPECT_EQ(GetMin<double>(highs, 5), 1);
  EXPECT_EQ(GetMin<double>(highs, 3), 3);
}

TEST(FileParser, IndexFileClosesAndTheMissingIndex) {
  auto s = std::make_unique<PriceSeries>();
  settings::Config config;
  config.showRS = true;
  ASSERT_TRUE(LoadIndexFile(*s, (test::LongPrices() / "^ixic.txt").string(), config));
  EXPECT_TRUE(s->rsAvailable);
  EXPECT_EQ(s->indexClose[0], 6903.39);
  EXPECT_EQ(s->indexClose[4027], 1979.25);  // 4,028 days of closes, back to 1/2/2002
  EXPECT_EQ(s->indexClose[4028], 0);
  EXPECT_TRUE(config.showRS);

  EXPECT_FALSE(LoadIndexFile(*s, "/nowhere/^IXIC.txt", config));
  EXPECT_FALSE(config.showRS);
  EXPECT_TRUE(s->rsAvailable);  // what was loaded stays available
}

TEST(FileParser, ABrokenIndexLineIsAnError) {
  TempDir dir;
  WriteText(dir / "^IXIC.txt", PriceFile({"2017-12-29,1,2,3,4,5", "2017-12-28,1,2,3"}));
  auto s = std::make_unique<PriceSeries>();
  settings::Config config;
  try {
    LoadIndexFile(*s, (dir / "^IXIC.txt").string(), config);
    FAIL() << "expected an error";
  } catch (const Error& e) {
    EXPECT_NE(std::string(e.what()).find("^IXIC.txt line 3: expected at least 5"),
              std::string::npos)
        << e.what();
  }
}

}  // namespace
}  // namespace halvard::data
