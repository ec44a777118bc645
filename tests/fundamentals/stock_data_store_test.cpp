#include "halvard/fundamentals/stock_data_store.h"

#include <gtest/gtest.h>

#include "fundamentals/stock_info.h"
#include "halvard/error.h"
#include "test_support.h"
#include "unprivileged.h"

namespace halvard::fundamentals {
namespace {

using test::ReadStockInfo;
using test::StockInfo;

// A fresh stock database in a scratch folder, with a way to look at it directly.
struct StoreTest : ::testing::Test {
  StoreTest() { db.Init(dir / "stockdata.mdb"); }

  void Row(const std::string& symbol, double eps, double yearEstimate = 0) {
    db.SetStockData(symbol, "", 0, 0, "", "", symbol + " Inc", eps, yearEstimate, 0);
  }
  std::string Column(const std::string& column) {
    SqlDatabase raw;
    raw.Open(dir / "stockdata.mdb", false);
    std::string text;
    for (const SqlRow& row :
         raw.Query("Select Symbol, " + column + " from Stocks order by Symbol")) {
      text += row[0].asText() + "=" + (row[1].isNull() ? "Null" : row[1].asText()) + " ";
    }
    return text;
  }
  test::TempDir dir;
  StockDataStore db;
  platform::NoProgress progress;
};

TEST_F(StoreTest, AnUnknownSymbolReadsAsNotDownloadedAndLeavesNameAndRanks) {
  const StockInfo info = ReadStockInfo(db, "MSFT", {.name = "preset", .epsRank = 7, .rsRank = 8});
  EXPECT_EQ(info.description, "Not yet downloaded");
  EXPECT_EQ(info.industry, "N/A");
  EXPECT_EQ(info.exchange, "N/A");
  EXPECT_EQ(info.name, "preset");
  EXPECT_EQ(info.epsRank, 7);
  EXPECT_EQ(info.rsRank, 8);
}

TEST_F(StoreTest, SetStockDataInsertsOnceThenUpdatesAndStoresApostrophesAsGiven) {
  db.SetStockData("MSFT", "It's software", 10, 20, "Business Software & Services", "NasdaqNM",
                  "O'Reilly & Co", 1.5, 2.25, -3.5);
  db.SetStockData("MSFT", "Still software", 30, 40, "Software", "NASDAQ", "Microsoft", 1.5, 2.25,
                  -3.5);
  EXPECT_EQ(Column("Name"), "MSFT=Microsoft ");
  EXPECT_EQ(Column("RSRank || '/' || EPSRank"), "MSFT=30.0/40.0 ");
  db.SetStockData("O'NEIL", "It's", 0, 0, "Ind", "Ex", "Mo's", 0.25, 12, -3.5);
  const StockInfo info = ReadStockInfo(db, "O'NEIL");
  EXPECT_EQ(info.name, "Mo's");
  EXPECT_EQ(info.description, "It's");
  EXPECT_EQ(Column("EPS || ' ' || YearEPSEstimate || ' ' || NextYearEPSEstimate"),
            "MSFT=1.5 2.25 -3.5 O'NEIL=0.25 12.0 -3.5 ");
}

// Names that would rewrite a statement built as text: each must reach only its own row.
TEST_F(StoreTest, HostileTextIsStoredAsGivenAndTouchesNoOtherRow) {
  db.SetStockData("KEEP", "sentinel", 11, 22, "Ind", "NYSE", "Keep Co", 1, 2, 3);
  const std::string evil = "x' OR '1'='1";
  db.SetStockData("EVIL", "d", 0, 0, "i", "X' WHERE 1=1 --", "Evil Inc", 0, 0, 0);
  db.SetRSAvg(evil, 9, 8);
  db.SetRSRank(evil, 9);
  db.SetEPSRank(evil, 9);
  db.SetSummary(evil, "all rows");
  db.SetIndustry(evil, "all rows");
  EXPECT_THROW(db.SetExchange(evil, "x"), Error);
  EXPECT_EQ(Column("Exchange"), "EVIL=X' WHERE 1=1 -- KEEP=NYSE ");
  EXPECT_EQ(
      Column("Description || '|' || Industry || '|' || Name || '|' || EPSRank || '|' || RSRank"),
      "EVIL=d|i|Evil Inc|0.0|0.0 KEEP=sentinel|Ind|Keep Co|22.0|11.0 ");
  EXPECT_EQ(Column("AvgRS"), "EVIL=Null KEEP=Null ");

  const StockInfo info = ReadStockInfo(db, "nosuch' OR '1'='1", {.name = "preset"});
  EXPECT_EQ(info.description + "|" + info.name, "Not yet downloaded|preset");
}

TEST_F(StoreTest, TwoRowsOfOneSymbolGetAThirdOnTheNextWholeRowWrite) {
  Row("DUP", 1);
  Row("DUP", 1.5);
  EXPECT_EQ(Column("EPS"), "DUP=1.5 ");
  SqlDatabase raw;  // the table has no key: another program may have added the symbol again
  raw.Open(dir / "stockdata.mdb", false);
  raw.Execute("INSERT INTO Stocks (Symbol) Values('DUP')");
  Row("DUP", 2);
  EXPECT_EQ(Column("EPS"), "DUP=2 DUP=2 DUP=2 ");
}

TEST_F(StoreTest, ANullNameLeavesTheCallersNameAndSettersTouchOnlyTheirColumn) {
  SqlDatabase raw;
  raw.Open(dir / "stockdata.mdb", false);
  raw.Execute("INSERT INTO Stocks (Symbol, EPSRank) Values('NEW', 55)");
  db.SetSummary("NEW", "Summary");
  db.SetIndustry("NEW", "Industry");
  db.SetRSRank("NEW", 66);
  db.SetRSAvg("NEW", 1.25, 0.5);
  db.SetSummary("NONE", "nothing happens to a symbol without a row");
  const StockInfo info = ReadStockInfo(db, "NEW", {.exchange = "before"});
  EXPECT_EQ(info.name, "");
  EXPECT_EQ(info.exchange, "before");
  EXPECT_EQ(info.description + "|" + info.industry, "Summary|Industry");
  EXPECT_EQ(info.epsRank, 55);
  EXPECT_EQ(info.rsRank, 66);
  EXPECT_EQ(Column("AvgRS || '/' || PrevAvgRS"), "NEW=1.25/0.5 ");
}

TEST_F(StoreTest, SetExchangeAlwaysFailsAndAReopenedDatabaseKeepsItsColumns) {
  Row("MSFT", 1);
  EXPECT_THROW(db.SetExchange("MSFT", "NYSE"), Error);
  db.Cleanup();
  db.Init(dir / "stockdata.mdb");  // both ALTERs fail quietly now
  db.SetRSAvg("MSFT", 2, 1);
  EXPECT_EQ(Column("AvgRS"), "MSFT=2 ");
}

// What browsing sees through a read-only store: the name of MSFT, the RS-rank scan, and what
// a write says.
std::string Browse(const std::filesystem::path& file) {
  StockDataStore browser;
  browser.InitReadOnly(file);
  const StockInfo info = ReadStockInfo(browser, "MSFT");
  std::string scan;
  for (const std::string& symbol : browser.RSRankScan(100)) scan += symbol + "\r\n";
  const std::string write = test::ErrorText([&] { browser.SetRSRank("MSFT", 5); });
  const bool refused = write.find("readonly") != std::string::npos;
  return info.name + "|" + info.description + "|" + scan + "|" +
         (refused ? "write refused" : write);
}

// Browsing opens the database for reading only, so it works where the user may not write: a
// read-only file, a folder nobody may write to. Checked as a user without privileges, since
// root may write anywhere.
TEST_F(StoreTest, AReadOnlyStoreReadsTheRowsAndRefusesEveryWrite) {
  namespace fs = std::filesystem;
  Row("MSFT", 1);
  db.Cleanup();
  const fs::path file = dir / "stockdata.mdb";
  EXPECT_EQ(Browse(file), "MSFT Inc||MSFT\r\n|write refused");

  fs::permissions(dir.path(), fs::perms(0777));
  fs::permissions(file, fs::perms(0444));
  EXPECT_EQ(test::AsUnprivilegedUser([&] { return Browse(file); }),
            "MSFT Inc||MSFT\r\n|write refused");

  fs::permissions(file, fs::perms(0644));
  fs::permissions(dir.path(), fs::perms(0555));
  EXPECT_EQ(test::AsUnprivilegedUser([&] { return Browse(file); }),
            "MSFT Inc||MSFT\r\n|write refused");
  fs::permissions(dir.path(), fs::perms::owner_all);
}

// Before anything was downloaded there is no database: looking sees no stocks and creates no
// file, in a folder open to writing or not.
TEST_F(StoreTest, AReadOnlyStoreOfAMissingFileSeesNoStocksAndCreatesNothing) {
  namespace fs = std::filesystem;
  const fs::path file = dir / "later" / "stockdata.mdb";
  fs::create_directory(dir / "later");
  EXPECT_EQ(Browse(file), "|Not yet downloaded||write refused");
  EXPECT_FALSE(fs::exists(file));

  fs::permissions(dir / "later", fs::perms(0555));
  fs::permissions(dir.path(), fs::perms(0755));
  EXPECT_EQ(test::AsUnprivilegedUser([&] { return Browse(file); }),
            "|Not yet downloaded||write refused");
  fs::permissions(dir / "later", fs::perms::owner_all);
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(StoreTest, AFailedInitLeavesEveryLaterStatementFailingWithThePath) {
  StockDataStore broken;
  broken.Init(dir / "no such folder" / "stockdata.mdb");
  const std::string error = test::ErrorText([&] { broken.SetRSRank("MSFT", 1); });
  EXPECT_NE(error.find("no such folder"), std::string::npos) << error;
}

TEST_F(StoreTest, EPSRanksArePercentilesOfTheStocksWithEPSAboveZero) {
  const std::pair<const char*, double> stocks[] = {{"A", 1}, {"B", 2}, {"C", 2}, {"D", 3},
                                                   {"E", 4}, {"Z", 0}, {"N", -1}};
  for (const auto& [symbol, eps] : stocks) Row(symbol, eps);
  db.SetEPSRank("Z", 33);  // kept: not ranked
  db.ComputeEPSRank(progress);
  EXPECT_EQ(Column("EPSRank"), "A=20 B=60 C=60 D=80 E=100 N=0 Z=33 ");
}

TEST_F(StoreTest, AnEmptyTableRanksNothingAndPartPercentsRoundDown) {
  db.ComputeEPSRank(progress);
  db.ComputeRSRank(progress);
  EXPECT_EQ(Column("EPSRank"), "");
  for (const char* s : {"A", "B", "C"}) Row(s, 1);
  db.SetRSAvg("A", 3, 0);
  db.SetRSAvg("B", 1, 0);
  db.SetRSAvg("C", 2, 0);
  db.ComputeRSRank(progress);
  EXPECT_EQ(Column("RSRank"), "A=100 B=33 C=66 ");
}

TEST_F(StoreTest, RSRanksHandTheGroupsRanksToTheStocksWithoutAnAverageFirst) {
  for (const char* s : {"NULL", "R1", "R2", "R3"}) Row(s, 1);
  db.SetRSAvg("R1", 1, 0);
  db.SetRSAvg("R2", 2, 0);
  db.SetRSAvg("R3", 3, 0);
  db.SetRSRank("R3", 99);
  db.ComputeRSRank(progress);
  // Four rows, but the Null group counts none: its ranks go one stock early, none reaches 100.
  EXPECT_EQ(Column("RSRank"), "NULL=25 R1=50 R2=75 R3=99 ");
}

TEST_F(StoreTest, RankScansSelectByThresholdAndTheIncreasingScansOrderByTheRise) {
  // symbol, EPS, year estimate, EPS rank, RS rank, AvgRS, PrevAvgRS
  struct S {
    const char* symbol;
    double eps, year, epsRank, rsRank, avg, prev;
  };
  const S stocks[] = {{"LOW", 1, 5, 79, 79, 3, 1},  {"TOP", 2, 3, 100, 100, 2, 1},
                      {"MID", 1, 4, 80, 80, 3, 1},  {"TIE", 1, 4, 90, 90, 2, 1},
                      {"FELL", 1, 9, 95, 95, 1, 2}, {"NOEPS", 0, 9, 95, 95, 5, 1}};
  for (const S& s : stocks) {
    db.SetStockData(s.symbol, "", s.rsRank, s.epsRank, "", "", "", s.eps, s.year, 0);
    db.SetRSAvg(s.symbol, s.avg, s.prev);
  }
  using Symbols = std::vector<std::string>;
  EXPECT_EQ(db.EPSRankScan(20), (Symbols{"TOP", "MID", "TIE", "FELL", "NOEPS"}));
  EXPECT_EQ(db.RSRankScan(0), (Symbols{"TOP"}));
  EXPECT_EQ(db.RSRankScan(100), (Symbols{"LOW", "TOP", "MID", "TIE", "FELL", "NOEPS"}));
  // The largest rise, then the higher rank.
  EXPECT_EQ(db.IncreasingRSScan(20), (Symbols{"MID", "TOP", "TIE"}));
  EXPECT_EQ(db.IncreasingEPSScan(20), (Symbols{"FELL", "TIE", "MID", "TOP"}));
}

}  // namespace
}  // namespace halvard::fundamentals
