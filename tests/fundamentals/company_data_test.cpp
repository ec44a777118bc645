// The company data of a stock from the quotes line and the profile page, served locally.

#include <gtest/gtest.h>

#include "fundamentals/stock_info.h"
#include "halvard/fundamentals/eps_store.h"
#include "halvard/fundamentals/stock_data_store.h"
#include "local_server.h"
#include "test_support.h"

namespace halvard::fundamentals {
namespace {

using test::Reply;

// A profile page as the service laid it out: the summary in the first cell of the table after
// its heading, the industry as a link after "Industry:".
std::string ProfilePage(const std::string& summaryMarker = "Multex Abridged Business Summary",
                        const std::string& cellEnd = "</td>") {
  return "<html><b>" + summaryMarker + "</b><table><tr><td>Makes software. It's big." + cellEnd +
         "</tr></table><a>View Key Statistics</a><table><tr><td>Industry:</td><td><a "
         "href=\"http://biz.example.com/ic/851.html\">Business Software &amp; Services</a>"
         "</td></tr></table></html>";
}

struct CompanyTest : ::testing::Test {
  CompanyTest() {
    db.Init(dir / "stockdata.mdb");
    db.UseServices({&http, server.base(), server.base()});
  }
  void Quotes(std::string body) { server.Answer("/d/quotes.csv", {Reply(200, std::move(body))}); }

  test::TempDir dir;
  test::LocalServer server;
  platform::CurlHttpClient http;
  StockDataStore db;
  std::string name = "n", exchange = "x", description = "d", industry = "i";
  double eps = -9, year = -9, next = -9;
};

TEST_F(CompanyTest, TheQuotesLineFillsNameExchangeAndTheThreeFigures) {
  Quotes("\"Microsoft Corp\",\"NasdaqNM\",1.2,1.5,-1.75\r\n");
  db.downloadExchange("MSFT", name, eps, year, next, exchange);
  EXPECT_EQ(name, "\"Microsoft Corp\"");
  EXPECT_EQ(exchange, "\"NasdaqNM\"");
  EXPECT_EQ(eps, 1.2);
  EXPECT_EQ(year, 1.5);
  EXPECT_EQ(next, -1.75);
  EXPECT_EQ(server.targets().front(), "/d/quotes.csv?s=MSFT&f=nxee7e8");
}

TEST_F(CompanyTest, AQuotesLineThatStopsConvertingKeepsWhatWasSetBefore) {
  Quotes("\"Acme, Inc\",\"NYSE\",0.5,N/A,2\r\n");  // the comma shifts every later field
  db.downloadExchange("ACME", name, eps, year, next, exchange);
  EXPECT_EQ(name + "|" + exchange, "\"Acme| Inc\"");
  EXPECT_EQ(eps, -9);
  Quotes("\"Short\",\"NYSE\",0.5\r\n");
  db.downloadExchange("ACME", name, eps, year, next, exchange);
  EXPECT_EQ(eps, 0.5);
  EXPECT_EQ(year, -9);
}

TEST_F(CompanyTest, NoAnswerOrAnErrorPageChangesNothing) {
  server.Answer("/d/quotes.csv", {Reply(404, "\"Not\",\"Found\",1,2,3")});
  server.Answer("/q/pr", {Reply(500, ProfilePage(), "text/html")});
  db.downloadExchange("MSFT", name, eps, year, next, exchange);
  db.getSummaryInfo("MSFT", description, industry);
  db.UseServices({&http, test::RefusingAddress(), test::RefusingAddress()});
  db.downloadExchange("MSFT", name, eps, year, next, exchange);
  db.getSummaryInfo("MSFT", description, industry);
  EXPECT_EQ(name + exchange + description + industry, "nxdi");
  EXPECT_EQ(eps, -9);
}

TEST_F(CompanyTest, TheProfilePageGivesTheFirstCellAndTheIndustryLinkText) {
  server.Answer("/q/pr", {Reply(200, ProfilePage(), "text/html")});
  db.getSummaryInfo("MSFT", description, industry);
  EXPECT_EQ(description, "Makes software. It's big.");
  EXPECT_EQ(industry, "Business Software & Services");
  EXPECT_EQ(server.targets().front(), "/q/pr?s=MSFT");
}

TEST_F(CompanyTest, AMissingMarkerEndsTheExtractionWhereItFails) {
  std::string page = ProfilePage();
  page.replace(page.find("View Key"), 8, "See Key");
  server.Answer("/q/pr", {Reply(200, page, "text/html")});
  db.getSummaryInfo("MSFT", description, industry);
  EXPECT_EQ(description + "|" + industry, "d|i");  // nothing set: the industry is not tried

  server.Answer(
      "/q/pr", {Reply(200, ProfilePage("Multex Abridged Business Summary", "</th>"), "text/html")});
  db.getSummaryInfo("MSFT", description, industry);
  EXPECT_EQ(description, "<td>Makes software. It's big.</th>");  // the row, not yet the cell
  EXPECT_EQ(industry, "i");
}

TEST_F(CompanyTest, GetDataForStockCleansTheNameAndStoresTheRowWithRanksZero) {
  Quotes("\"Smith &amp; Wesson's \"\"Arms\"\"\",\"NYSE\",1,2,3\r\n");
  server.Answer("/q/pr", {Reply(200, ProfilePage(), "text/html")});
  db.SetStockData("SWHC", "old", 70, 80, "", "", "", 0, 0, 0);
  db.getDataForStock("SWHC");
  const auto info = test::ReadStockInfo(
      db, "SWHC",
      {.description = "d", .industry = "i", .exchange = "x", .epsRank = -1, .rsRank = -1});
  EXPECT_EQ(info.name, "Smith & Wesson's Arms");
  EXPECT_EQ(info.exchange, "NYSE");
  EXPECT_EQ(info.description, "Makes software. It's big.");
  EXPECT_EQ(info.industry, "Business Software & Services");
  EXPECT_EQ(info.epsRank + info.rsRank, 0);
}

// A quotes answer is data from the network: whatever it holds lands in its own row only.
TEST_F(CompanyTest, AHostileQuotesAnswerChangesOnlyTheNewStocksRow) {
  db.SetStockData("KEEP", "sentinel", 11, 22, "Ind", "NYSE", "Keep Co", 1, 2, 3);
  Quotes("\"Evil Inc\",\"X' WHERE 1=1 --\",0,0,0\r\n");
  db.getDataForStock("EVIL");
  Quotes("\"Mo's\",\"NYSE\",1,2,3\r\n");
  db.getDataForStock("MO");
  const std::pair<const char*, const char*> rows[] = {{"KEEP", "Keep Co|NYSE|sentinel"},
                                                      {"EVIL", "Evil Inc|X' WHERE 1=1 --|"},
                                                      {"MO", "Mo's|NYSE|"}};
  for (const auto& [symbol, expected] : rows) {
    const auto info =
        test::ReadStockInfo(db, symbol, {.description = "d", .industry = "i", .exchange = "x"});
    EXPECT_EQ(info.name + "|" + info.exchange + "|" + info.description, expected) << symbol;
  }
}

TEST(EPSStore, AMissingFileIsCreatedEmptyAndQuotedKeysMatchBareSymbols) {
  test::TempDir dir;
  EPSStore store;
  store.ReadEPSData(dir / "eps.dat");
  EXPECT_EQ(test::ReadText(dir / "eps.dat"), "");

  test::WriteText(dir / "eps.dat",
                  "\"MSFT\",1.2,1.5,1.7\r\n\"IBM\",8,9,10\r\n\"msft\",1.3,1.5,1.7\r\n");
  store.ReadEPSData(dir / "eps.dat");
  ASSERT_EQ(store.records().size(), 2u);  // the later MSFT line is the newer download
  EXPECT_TRUE(store.CheckExists("Msft"));
  double eps = 0;
  store.GetEPS("IBM", eps);
  EXPECT_EQ(eps, 8);
  store.GetEPS("NONE", eps);
  EXPECT_EQ(eps, 8);
  store.SetEPS("IBM", 8.25);
  store.WriteEPSData();
  EXPECT_EQ(test::ReadText(dir / "eps.dat"), "\"msft\",1.3,1.5,1.7\r\nIBM,8.25\r\n");
}

// Each key keeps its last line, in the order of those lines; a line whose EPS does not read is
// quoted short, its control bytes escaped.
TEST(EPSStore, ALineThatIsNoEPSIsQuotedShortAndEscaped) {
  EPSStore store;
  const std::string flood(100'000, '9');
  store.ParseEPSData("A,1\nB,2\na,3\n\"B\",x\x1b[2J" + flood + "\nC,\n", "eps.dat");
  ASSERT_EQ(store.records().size(), 3u);
  EXPECT_EQ(store.records()[0].line, "a,3");
  EXPECT_EQ(store.records()[2].key, "C");
  double eps = 0;
  const std::string said = test::ErrorText([&] { store.GetEPS("b", eps); });
  EXPECT_EQ(said.rfind("eps.dat: the EPS of \"b\" is not a number: \"\"B\",x\\x1b[2J999", 0), 0u)
      << said.substr(0, 300);
  EXPECT_LT(said.size(), 300u);
}

TEST(EPSStore, ADownloadReplacesTheRecordAtTheEndAndAFailureKeepsIt) {
  test::TempDir dir;
  test::LocalServer server;
  platform::CurlHttpClient http;
  test::WriteText(dir / "eps.dat", "\"MSFT\",1,2,3\r\n\"IBM\",8,9,10\r\n");
  EPSStore store;
  store.ReadEPSData(dir / "eps.dat");
  server.Answer("/d/quotes.csv", {Reply(200, "\"MSFT\",1.25,2,3\r\n\"extra\"\n")});
  bool success = false;
  store.downloadEPS(http, server.base(), "MSFT", success);
  EXPECT_TRUE(success);
  EXPECT_EQ(server.targets().front(), "/d/quotes.csv?s=MSFT&f=see7e8");
  store.downloadEPS(http, test::RefusingAddress(), "IBM", success);
  EXPECT_FALSE(success);
  store.WriteEPSData();
  // The first line as sent, its CR included.
  EXPECT_EQ(test::ReadText(dir / "eps.dat"), "\"IBM\",8,9,10\r\n\"MSFT\",1.25,2,3\r\r\n");
}

}  // namespace
}  // namespace halvard::fundamentals
