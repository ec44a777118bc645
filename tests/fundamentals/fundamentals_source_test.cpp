// Company data from the services that answer today, served locally in their documented shapes:
// the SEC's files for edgar, the quote-summary document (after the chart service's handshake)
// for summary.

#include "halvard/fundamentals/fundamentals_source.h"

#include <gtest/gtest.h>

#include "fundamentals/stock_info.h"
#include "halvard/screener/stock_rows.h"
#include "local_server.h"
#include "test_support.h"

namespace halvard::fundamentals {
namespace {

using test::GenuineAnswer;
using test::ReadStockInfo;
using test::Reply;

struct SourceTest : ::testing::Test {
  SourceTest() {
    db.Init(dir / "stockdata.mdb");
    services = test::ServicesAt(server.base());
    services.cookieHost = server.base();
    services.contact = "Jane Doe jane@example.com";
    server.Answer(
        "/files/company_tickers_exchange.json",
        {Reply(200, GenuineAnswer("edgar/company_tickers_exchange.json"), "application/json")});
    server.Answer(
        "/submissions/CIK0000320193.json",
        {Reply(200, GenuineAnswer("edgar/CIK0000320193-submissions.json"), "application/json")});
    server.Answer(
        "/api/xbrl/companyfacts/CIK0000320193.json",
        {Reply(200, GenuineAnswer("edgar/CIK0000320193-companyfacts.json"), "application/json")});
  }
  // The row as the local screen and the information page read it.
  screener::StockRow Row(const std::string& symbol) {
    const auto rows = screener::StockRows::Read(dir / "stockdata.mdb");
    const screener::StockRow* row = rows.Find(symbol);
    return row != nullptr ? *row : screener::StockRow{};
  }

  test::TempDir dir;
  test::LocalServer server;
  settings::ServiceSettings services;
  StockDataStore db;
};

TEST_F(SourceTest, EdgarFillsTheRowWithoutEstimatesAndNamesItselfToTheSec) {
  services.fundamentals = "edgar";
  const auto source = MakeFundamentalsSource(services);
  EXPECT_EQ(source->StoreCompanyData(db, "AAPL"), "");
  const auto info = ReadStockInfo(db, "AAPL", {.description = "d", .epsRank = 5, .rsRank = 5});
  EXPECT_EQ(info.name, "Apple Inc.");
  EXPECT_EQ(info.exchange, "Nasdaq");
  EXPECT_EQ(info.industry, "Electronic Computers");
  EXPECT_EQ(info.description, "");  // the SEC has no business summary
  EXPECT_EQ(info.epsRank, 0);
  const screener::StockRow row = Row("AAPL");
  EXPECT_EQ(row.eps, 6.13);
  EXPECT_FALSE(row.yearEstimate);  // stored as Null, not 0
  EXPECT_FALSE(row.nextYearEstimate);
  EXPECT_TRUE(db.LacksEstimates());

  std::string why;
  EXPECT_EQ(source->EPSLine("AAPL", why), "\"AAPL\",6.13,,");
  // The ticker list is asked for once a run; every request carries the contact.
  EXPECT_EQ(server.targets(),
            (std::vector<std::string>{"/files/company_tickers_exchange.json",
                                      "/submissions/CIK0000320193.json",
                                      "/api/xbrl/companyfacts/CIK0000320193.json",
                                      "/api/xbrl/companyfacts/CIK0000320193.json"}));
  for (const std::string& agent : server.headers("User-Agent")) {
    EXPECT_EQ(agent, "Jane Doe jane@example.com");
  }
}

TEST_F(SourceTest, EdgarSaysWhyASymbolGotNothing) {
  services.fundamentals = "edgar";
  const auto source = MakeFundamentalsSource(services);
  EXPECT_EQ(source->StoreCompanyData(db, "ZZZZ"), "the SEC lists no company with the ticker ZZZZ");
  std::string why;
  EXPECT_FALSE(source->EPSLine("GOOGL", why));  // listed, but its facts are not served here
  EXPECT_NE(why.find("/api/xbrl/companyfacts/CIK0001652044.json: HTTP status 404"),
            std::string::npos)
      << why;
  EXPECT_EQ(ReadStockInfo(db, "ZZZZ").description, "Not yet downloaded");

  // Without the ticker list no symbol can be found; the list is not asked for again and again.
  test::LocalServer down;
  services.edgarHost = down.base();
  const auto cut = MakeFundamentalsSource(services);
  EXPECT_NE(cut->StoreCompanyData(db, "AAPL").find("the SEC's ticker list: "), std::string::npos);
  EXPECT_NE(cut->StoreCompanyData(db, "AAPL").find("the SEC's ticker list: "), std::string::npos);
  EXPECT_EQ(down.targets().size(), 1u);
}

TEST_F(SourceTest, EdgarNeedsAContact) {
  services.fundamentals = "edgar";
  services.contact = "";
  EXPECT_EQ(test::ErrorText([&] { MakeFundamentalsSource(services); }), kContactNeeded);
  services.fundamentals = "summary";
  EXPECT_NO_THROW(MakeFundamentalsSource(services));
}

TEST_F(SourceTest, SummaryFillsEveryFigureAfterTheHandshake) {
  services.fundamentals = "summary";
  server.Answer("/", {Reply(404, "Not Found", "text/html", {{"Set-Cookie", "A3=abc; Path=/"}})});
  server.Answer("/v1/test/getcrumb", {Reply(200, "cRuMb", "text/plain")});
  server.Answer("/v10/finance/quoteSummary/AAPL",
                {Reply(401,
                       R"({"finance":{"result":null,"error":{"code":"Unauthorized",)"
                       R"("description":"Invalid Crumb"}}})",
                       "application/json"),
                 Reply(200, GenuineAnswer("quote-summary-aapl.json"), "application/json")});
  const auto source = MakeFundamentalsSource(services);
  EXPECT_EQ(source->StoreCompanyData(db, "AAPL"), "");
  std::string why;
  EXPECT_EQ(source->EPSLine("AAPL", why), "\"AAPL\",6.13,6.62,7.15");
  const auto info = ReadStockInfo(db, "AAPL");
  EXPECT_EQ(info.name, "Apple Inc.");
  EXPECT_EQ(info.exchange, "NasdaqGS");
  EXPECT_EQ(info.industry, "Consumer Electronics");
  EXPECT_TRUE(info.description.starts_with("Apple Inc. designs"));
  EXPECT_EQ(Row("AAPL").nextYearEstimate, 7.15);
  EXPECT_FALSE(db.LacksEstimates());
  const auto targets = server.targets();
  ASSERT_EQ(targets.size(), 5u);
  EXPECT_EQ(targets[3],
            "/v10/finance/quoteSummary/AAPL?modules=price,assetProfile,defaultKeyStatistics,"
            "earningsTrend&crumb=cRuMb");
  EXPECT_TRUE(targets[4].ends_with("&crumb=cRuMb"));  // the crumb is kept for the run
  EXPECT_EQ(server.headers("Cookie")[3], "A3=abc");
}

TEST_F(SourceTest, SummaryNamesTheServicesRefusal) {
  services.fundamentals = "summary";
  server.Answer("/v10/finance/quoteSummary/NOPE",
                {Reply(404,
                       R"({"quoteSummary":{"result":null,"error":{"code":"Not Found",)"
                       R"("description":"Quote not found for symbol: NOPE"}}})",
                       "application/json")});
  const auto source = MakeFundamentalsSource(services);
  EXPECT_EQ(
      source->StoreCompanyData(db, "NOPE"),
      "a JSON error object (HTTP status 404): \"Not Found: Quote not found for symbol: NOPE\"");
}

}  // namespace
}  // namespace halvard::fundamentals
