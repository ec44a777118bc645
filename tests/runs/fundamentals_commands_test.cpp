#include "halvard/runs/fundamentals_commands.h"

#include <gtest/gtest.h>

#include "halvard/data/price_folder.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"
#include "local_server.h"
#include "runs_fixture.h"

namespace halvard::runs {
namespace {

using test::Reply;

// A price file of `days` days, the newest `newDays` closing at newClose and the rest at close.
void Closes(const std::filesystem::path& file, int days, double close, int newDays = 0,
            double newClose = 0) {
  std::vector<std::string> lines;
  const double newest = platform::SerialFromCivil({2017, 12, 29});
  for (int i = 0; i < days; ++i) {
    const std::string c = platform::FormatGeneral(i < newDays ? newClose : close);
    lines.push_back(platform::FormatShortDate(newest - i) + "," + c + "," + c + "," + c + "," + c +
                    ",1000," + c);
  }
  test::WriteText(file, test::PriceFile(lines));
}

class FundamentalsTest : public RunsTest {
 protected:
  std::string Column(const std::string& column) {
    fundamentals::SqlDatabase raw;
    raw.Open(dir / "stockdata.mdb", false);
    std::string text;
    for (const auto& row : raw.Query("Select Symbol, " + column + " from Stocks order by Symbol")) {
      text += row[0].asText() + "=" + row[1].asText() + " ";
    }
    return text;
  }
  void Rows(std::initializer_list<const char*> symbols) {
    for (const char* symbol : symbols)
      s.stockDb().SetStockData(symbol, "", 0, 0, "", "", "", 1, 0, 0);
  }
  platform::NoProgress progress;
};

TEST_F(FundamentalsTest, PriceFilesAreTheTxtFilesInCaseBlindOrder) {
  for (const char* name : {"b.txt", "A.TXT", "BRK.B.txt", "eps.dat", "^IXIC.txt", "C.txt.bak"}) {
    test::WriteText(dir / name, "");
  }
  const auto files = data::ListPriceFiles(dir.path());
  EXPECT_EQ(std::vector<std::string>(files.begin(), files.end()),
            (std::vector<std::string>{"A.TXT", "b.txt", "BRK.B.txt", "^IXIC.txt"}));
  EXPECT_EQ(data::SymbolOfFileName("BRK.B.txt"), "BRK");
}

TEST_F(FundamentalsTest, RSAveragesSpanAllDaysAndTheNewestNMinus69ThenRank) {
  Closes(dir / "^IXIC.txt", 80, 100);
  Closes(dir / "A.txt", 80, 100, 11, 200);  // rs 2 on the newest 11 days, 1 on the 69 before
  Closes(dir / "B.txt", 69, 150);           // too short for a previous average
  Closes(dir / "BRK.B.txt", 80, 300);
  test::WriteText(dir / "BAD.txt", test::PriceFile({"not a day"}));
  ASSERT_TRUE(s.StartUp());
  Rows({"A", "B", "BRK", "^IXIC", "NOFILE"});
  const auto skipped = ComputeRSRankCommand(s, progress);
  ASSERT_EQ(skipped.size(), 1u);
  EXPECT_NE(skipped[0].find("BAD.txt"), std::string::npos);
  EXPECT_EQ(Column("AvgRS"), "A=1.1375 B=1.5 BRK=3 NOFILE= ^IXIC=1 ");
  EXPECT_EQ(Column("PrevAvgRS"), "A=2 B=0 BRK=3 NOFILE= ^IXIC=1 ");
  // The row without an average sorts first and takes the lowest group's rank, every later stock
  // the next group's, and the best keeps its old rank.
  EXPECT_EQ(Column("RSRank"), "A=60 B=80 BRK=0 NOFILE=20 ^IXIC=40 ");
}

TEST_F(FundamentalsTest, RSAveragesAreTheSameWhateverTheThreadsAndTheChartKeepsTheLastStock) {
  Closes(dir / "A.txt", 300, 100, 40, 150);
  Closes(dir / "BAD.txt", 0, 0);  // a header and no day
  Closes(dir / "C.txt", 20, 50);
  Closes(dir / "D.txt", 90, 80, 10, 60);
  Closes(dir / "^IXIC.txt", 300, 100, 50, 90);
  ASSERT_TRUE(s.StartUp());
  Rows({"A", "BAD", "C", "D"});
  std::string seen[2];
  for (const int jobs : {1, 3}) {
    s.config.jobs = static_cast<int16_t>(jobs);
    const auto skipped = ComputeRSRankCommand(s, progress);
    const engine::StockView& v = s.view();
    seen[jobs == 1 ? 0 : 1] =
        Column("AvgRS || '/' || PrevAvgRS || '/' || RSRank") + (skipped.empty() ? "" : skipped[0]) +
        " " + v.stockSymbol + " " + std::to_string(v.barCount) + " " +
        platform::FormatGeneral(v.rsLine[0]) + " " + platform::FormatGeneral(v.rsLine[19]);
  }
  EXPECT_EQ(seen[1], seen[0]);
  EXPECT_NE(seen[0].find("BAD.txt"), std::string::npos) << seen[0];
}

TEST_F(FundamentalsTest, WithoutTheIndexEveryStockAveragesZeroAndRanksTop) {
  Closes(dir / "A.txt", 80, 100);
  Closes(dir / "B.txt", 80, 200);
  Rows({"A", "B"});
  ComputeRSRankCommand(s, progress);
  EXPECT_EQ(Column("AvgRS || '/' || PrevAvgRS || '/' || RSRank"), "A=0/0/100.0 B=0/0/100.0 ");
}

// Counts the lines of eps.dat each time a file is about to be visited.
struct EPSFileWatch : platform::NoProgress {
  std::filesystem::path file;
  std::vector<int> lines;
  void Step(int, int, std::string_view) override {
    const std::string text = test::ReadText(file);
    lines.push_back(static_cast<int>(std::count(text.begin(), text.end(), '\n')));
  }
};

TEST_F(FundamentalsTest, EPSDataIsSavedAfterEveryTenSuccessesAndUntilTheFirst) {
  for (int i = 0; i < 12; ++i) {
    test::WriteText(dir / std::string("S").append(std::to_string(10 + i)).append(".txt"), "");
  }
  test::LocalServer server;
  server.Answer("/d/quotes.csv", {Reply(500, ""), Reply(200, "\"S\",1,2,3\n")});
  platform::CurlHttpClient http;
  EPSFileWatch watch;
  watch.file = dir / "eps.dat";
  s.epsStore();  // creates the empty file
  DownloadEPSData(s, http, server.base(), watch);
  // The first file fails (saved with nothing), the next ten succeed: saved after the tenth.
  EXPECT_EQ(watch.lines, (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 10}));
  EXPECT_EQ(s.epsStore().records().size(), 11u);
  EXPECT_EQ(test::ReadText(dir / "eps.dat").substr(0, 11), "\"S\",1,2,3\r\n");
}

TEST_F(FundamentalsTest, CompanyDataIsFetchedOnlyForStocksWithoutAName) {
  for (const char* name : {"A.txt", "B.txt"}) test::WriteText(dir / name, "");
  s.stockDb().SetStockData("A", "", 0, 0, "", "", "Alpha", 0, 0, 0);
  test::LocalServer server;
  server.Answer("/d/quotes.csv", {Reply(200, "\"Beta\",\"NYSE\",1,2,3\r\n")});
  server.Answer("/q/pr", {Reply(200, "no markers", "text/html")});
  platform::CurlHttpClient http;
  DownloadCompanyData(s, {&http, server.base(), server.base()}, progress);
  EXPECT_EQ(server.targets(),
            (std::vector<std::string>{"/d/quotes.csv?s=B&f=nxee7e8", "/q/pr?s=B"}));
  EXPECT_EQ(Column("Name || '/' || Exchange"), "A=Alpha/ B=Beta/NYSE ");
}

}  // namespace
}  // namespace halvard::runs
