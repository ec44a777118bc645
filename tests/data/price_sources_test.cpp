#include "halvard/data/price_sources.h"

#include <gtest/gtest.h>

#include "halvard/data/price_answer.h"
#include "halvard/platform/date_text.h"
#include "local_server.h"

namespace halvard::data {
namespace {

using test::Reply;

double Date(int y, int m, int d) {
  return platform::SerialFromCivil({y, m, d});
}

std::unique_ptr<PriceSource> SourceAt(const std::string& provider, const std::string& base,
                                      int retries = 0, platform::RequestHooks hooks = {}) {
  settings::ServiceSettings s = test::ServicesAt(base, provider);
  s.tiingoToken = "KEY";
  s.timeoutSeconds = 5;
  s.retries = retries;
  return MakePriceSource(s, hooks);
}

TEST(TableSource, BuildsTheRequestAddressKeyByKey) {
  const TableSource source("ichart.example.com", nullptr);
  EXPECT_EQ(source.BuildRequestAddress("^IXIC", Date(2003, 1, 5), Date(2003, 11, 7)),
            "http://ichart.example.com/table.csv?a=0&b=5&c=2003&d=10&e=7&f=2003"
            "&g=d&y=0&ignore=.csv&s=^IXIC");
  const TableSource https("https://mirror.example.com:8443/", nullptr);
  EXPECT_EQ(https.BuildRequestAddress("brk.b", Date(2010, 12, 31), Date(2011, 1, 1)),
            "https://mirror.example.com:8443/table.csv?a=11&b=31&c=2010&d=0&e=1&f=2011"
            "&g=d&y=0&ignore=.csv&s=brk.b");
  // A symbol adds no parameter of its own.
  EXPECT_TRUE(source.BuildRequestAddress("A&B=C D", Date(2003, 1, 5), Date(2003, 11, 7))
                  .ends_with("&s=A%26B%3DC%20D"));
}

TEST(PriceSources, EachServiceIsAskedItsWayAndAnswersInTheStoredForm) {
  test::LocalServer server;
  // Two days and a holiday with nulls; Sydney opens on the previous UTC day.
  server.Answer("/v8/finance/chart/BHP.AX", {{200, R"({"chart":{"result":[{
      "meta":{"gmtoffset":39600},
      "timestamp":[1704236400,1704322800,1704409200],
      "indicators":{"quote":[{"open":[10.5,null,11],"high":[11.25,null,12],
                              "low":[10,null,10.75],"close":[11.019999504089355,null,11.5],
                              "volume":[1000,null,2500]}],
                    "adjclose":[{"adjclose":[10.9,null,11.4]}]}}],"error":null}})",
                                              "application/json"}});
  server.Answer("/q/d/l/", {{200,
                             "Date,Open,High,Low,Close,Volume\r\n"
                             "2024-01-02,1,2,0.5,1.5,100\r\n"
                             "2024-01-03,1.5,2.5,1,2,200\r\n"}});
  server.Answer("/tiingo/daily/AAPL/prices",
                {{200,
                  "date,close,high,low,open,volume,adjClose,divCash\n"
                  "2024-01-02,185.64,188.44,183.885,187.15,82488700,184.9,0.0\n"
                  "2024-01-03,184.25,185.88,183.43,184.22,58414500,183.5,0.0\n"}});
  const double from = Date(2024, 1, 1), to = Date(2024, 1, 5);

  const FetchResult chart = SourceAt("chart", server.base())->Fetch("BHP.AX", from, to);
  EXPECT_EQ(chart.failure, "");
  EXPECT_EQ(chart.body,
            "Date,Open,High,Low,Close,Volume,Adj Close\n"
            "2024-01-05,11,12,10.75,11.5,2500,11.4\n"
            "2024-01-03,10.5,11.25,10,11.02,1000,10.9\n");

  const FetchResult stooq = SourceAt("stooq", server.base())->Fetch("AAPL", from, to);
  EXPECT_EQ(stooq.body,
            "Date,Open,High,Low,Close,Volume,Adj Close\n"
            "2024-01-03,1.5,2.5,1,2,200,2\n"
            "2024-01-02,1,2,0.5,1.5,100,1.5\n");

  const FetchResult tiingo = SourceAt("tiingo", server.base())->Fetch("AAPL", from, to);
  EXPECT_EQ(tiingo.body,
            "Date,Open,High,Low,Close,Volume,Adj Close\n"
            "2024-01-03,184.22,185.88,183.43,184.25,58414500,183.5\n"
            "2024-01-02,187.15,188.44,183.885,185.64,82488700,184.9\n");

  EXPECT_EQ(server.targets(),
            (std::vector<std::string>{
                "/v8/finance/chart/BHP.AX?period1=1704067200&period2=1704499200&interval=1d",
                "/q/d/l/?s=aapl.us&d1=20240101&d2=20240105&i=d",
                "/tiingo/daily/AAPL/prices?startDate=2024-01-01&endDate=2024-01-05&format=csv"
                "&token=KEY"}));
}

TEST(PriceSources, AnswersThatAreNotPriceDataFailTheSymbolSayingWhich) {
  const std::string page = "<!DOCTYPE html>\n<html><body>Checking your browser\n</body></html>";
  const struct {
    const char* provider;
    const char* path;
    Reply reply;
    const char* said;
  } cases[] = {
      {"chart", "/v8/finance/chart/X", {200, page, "text/html"}, "an HTML page"},
      {"table", "/table.csv", {200, page, "text/html"}, "an HTML page"},
      {"chart",
       "/v8/finance/chart/X",
       {404, R"({"chart":{"result":null,"error":{"code":"Not Found",)"
             R"("description":"No data found, symbol may be delisted"}}})"},
       "a JSON error object (HTTP status 404): \"Not Found: No data found, symbol may be "
       "delisted\""},
      {"tiingo",
       "/tiingo/daily/X/prices",
       {200, R"({"detail":"Error: Ticker 'X' not found"})"},
       "a JSON error object (HTTP status 200): \"Error: Ticker 'X' not found\""},
      {"chart", "/v8/finance/chart/X", {200, R"({"chart":{"result":[]}})"}, "wrong shape"},
      {"stooq", "/q/d/l/", {200, "No data"}, "wrong shape"},
      {"tiingo",
       "/tiingo/daily/X/prices",
       {500, "oops"},
       "HTTP status 500 (Internal Server Error): \"oops\""},
      {"table",
       "/table.csv",
       {429, "Too Many Requests", "text/plain", {{"Retry-After", "0"}}},
       "rate limited"},
  };
  for (const auto& c : cases) {
    test::LocalServer server;
    server.Answer(c.path, {c.reply});
    const FetchResult r = SourceAt(c.provider, server.base())->Fetch("X", 40000, 40100);
    EXPECT_FALSE(r.ok()) << c.provider << " " << c.said;
    EXPECT_NE(r.failure.find(c.said), std::string::npos) << c.provider << ": " << r.failure;
    EXPECT_EQ(server.targets().size(), 1u) << c.provider;
  }
}

TEST(PriceSources, EveryServiceTriesABusyAnswerAgain) {
  const Reply busy{503, "", "text/plain", {{"Retry-After", "0"}}};
  const std::string csv = "Date,Open,High,Low,Close,Volume\n2024-01-02,1,2,0.5,1.5,100\n";
  const struct {
    const char* provider;
    const char* path;
  } cases[] = {{"table", "/table.csv"},
               {"chart", "/v8/finance/chart/X"},
               {"stooq", "/q/d/l/"},
               {"tiingo", "/tiingo/daily/X/prices"}};
  for (const auto& c : cases) {
    test::LocalServer server;
    server.Answer(c.path, {busy, busy, {200, csv}});
    std::vector<std::string> retries;
    const auto source = SourceAt(c.provider, server.base(), 3,
                                 {{}, [&](const std::string& r) { retries.push_back(r); }});
    const FetchResult r = source->Fetch("X", 45000, 45300);
    EXPECT_EQ(server.targets().size(), 3u) << c.provider;
    EXPECT_EQ(retries.size(), 2u) << c.provider;
    EXPECT_EQ(r.failure.find("503"), std::string::npos) << c.provider << ": " << r.failure;
  }
}

// Seconds no calendar holds must not wrap around into dates like -219246475-01-2.
TEST(PriceSources, AChartAnswerWithSecondsBeyondTheDatesIsRefused) {
  const auto answer = [](const std::string& offset, const std::string& stamp) {
    return R"({"chart":{"result":[{"meta":{"gmtoffset":)" + offset + R"(},"timestamp":[)" + stamp +
           R"(],"indicators":{"quote":[{"open":[1],"high":[2],"low":[0.5],"close":[1.5],)"
           R"("volume":[100]}]}}]}})";
  };
  const struct {
    std::string offset, stamp, said;
  } cases[] = {
      {"1e300", "1704236400", "a gmtoffset that is no time-zone offset"},
      {"-86401", "1704236400", "a gmtoffset that is no time-zone offset"},
      {"0", "1e300", "a timestamp beyond the dates"},
      {"0", "9223372036854775807", "a timestamp beyond the dates"},
      {"86400", "-2209075201", "a timestamp beyond the dates"},
      {"0", "1704236400.5", ""},
  };
  for (const auto& c : cases) {
    test::LocalServer server;
    server.Answer("/v8/finance/chart/X", {{200, answer(c.offset, c.stamp), "application/json"}});
    const FetchResult r = SourceAt("chart", server.base())->Fetch("X", 40000, 40100);
    if (c.said.empty()) {
      EXPECT_EQ(r.body,
                "Date,Open,High,Low,Close,Volume,Adj Close\n2024-01-02,1,2,0.5,1.5,100,1.5\n");
    } else {
      EXPECT_NE(r.failure.find(c.said), std::string::npos)
          << c.offset << " " << c.stamp << ": " << r.failure;
    }
  }
}

// Since 2026 stooq asks for a key and answers a client without one with a proof-of-work page
// of status 200; the failure says what to do about it.
TEST(PriceSources, StooqTakesItsKeyAndNamesItsBrowserCheck) {
  const std::string challenge =
      "<!DOCTYPE html><html><head><title>stooq</title><script>/* proof of work */"
      "function solve(seed,difficulty){}</script></head><body>Checking your browser..."
      "</body></html>";
  test::LocalServer server;
  server.Answer("/q/d/l/",
                {{200, challenge, "text/html"},
                 {200, "Exceeded the daily hits limit", "text/html"},
                 {200, "Date,Open,High,Low,Close,Volume\n2024-01-02,1,2,0.5,1.5,100\n"}});
  settings::ServiceSettings s = test::ServicesAt(server.base(), "stooq");
  const FetchResult keyless = MakePriceSource(s)->Fetch("AAPL", 45000, 45005);
  EXPECT_EQ(keyless.failure,
            "the stooq service asked for a browser check: set [Services] Stooq Key");
  s.stooqKey = "k3y/+";
  const auto keyed = MakePriceSource(s);
  EXPECT_NE(keyed->Fetch("AAPL", 45000, 45005).failure.find("Exceeded the daily hits limit"),
            std::string::npos);
  EXPECT_TRUE(keyed->Fetch("AAPL", 45000, 45005).ok());
  const auto targets = server.targets();
  ASSERT_EQ(targets.size(), 3u);
  EXPECT_EQ(targets[0].find("apikey"), std::string::npos);
  EXPECT_TRUE(targets[2].ends_with("&i=d&apikey=k3y%2F%2B")) << targets[2];
}

// The cookie page hands out a cookie, the crumb request answers with the crumb for it, and the
// request that asked for them is made again with both; the next symbol uses the same crumb.
TEST(PriceSources, TheChartServiceGetsItsCookieAndCrumbWhenItAsksForThem) {
  const std::string chart =
      R"({"chart":{"result":[{"meta":{"gmtoffset":0},"timestamp":[1704189600],)"
      R"("indicators":{"quote":[{"open":[1],"high":[2],"low":[0.5],"close":[1.5],)"
      R"("volume":[100]}]}}],"error":null}})";
  const std::string invalidCrumb =
      R"({"finance":{"result":null,"error":{"code":"Unauthorized","description":"Invalid Crumb"}}})";
  test::LocalServer server;
  server.Answer("/", {{404, "Not Found", "text/html", {{"Set-Cookie", "A3=session1; Path=/"}}}});
  server.Answer("/v1/test/getcrumb", {{200, "Xy/Z1.q", "text/plain"}});
  server.Answer("/v8/finance/chart/A",
                {{401, invalidCrumb, "application/json"}, {200, chart, "application/json"}});
  server.Answer("/v8/finance/chart/B", {{200, chart, "application/json"}});
  settings::ServiceSettings s = test::ServicesAt(server.base());
  s.cookieHost = server.base();
  const auto source = MakePriceSource(s);
  EXPECT_TRUE(source->Fetch("A", 45000, 45005).ok());
  EXPECT_TRUE(source->Fetch("B", 45000, 45005).ok());
  const auto targets = server.targets();
  ASSERT_EQ(targets.size(), 5u);
  EXPECT_EQ(targets[1], "/");
  EXPECT_EQ(targets[2], "/v1/test/getcrumb");
  EXPECT_TRUE(targets[3].ends_with("&interval=1d&crumb=Xy%2FZ1.q")) << targets[3];
  EXPECT_TRUE(targets[4].starts_with("/v8/finance/chart/B?")) << targets[4];
  EXPECT_TRUE(targets[4].ends_with("&crumb=Xy%2FZ1.q")) << targets[4];
  const auto cookies = server.headers("Cookie");
  EXPECT_EQ(cookies[2], "A3=session1");
  EXPECT_EQ(cookies[3], "A3=session1");
  EXPECT_NE(server.headers("User-Agent")[0].find("Mozilla/5.0"), std::string::npos);
}

TEST(PriceSources, AHandshakeThatGetsNoCrumbSaysSo) {
  test::LocalServer server;
  server.Answer("/v8/finance/chart/A",
                {{401, R"({"finance":{"error":{"code":"Unauthorized"}}})", "application/json"}});
  server.Answer("/v1/test/getcrumb", {{200, "<html>Consent</html>", "text/html"}});
  const settings::ServiceSettings s = test::ServicesAt(server.base());  // no cookie page
  const FetchResult r = MakePriceSource(s)->Fetch("A", 45000, 45005);
  EXPECT_NE(r.failure.find("the chart service asked for a session and the crumb request was "
                           "answered with HTTP status 200"),
            std::string::npos)
      << r.failure;
}

// Provider=chart,tiingo: a symbol the first service has nothing for comes from the second; an
// answer that would not be stored counts as nothing.
TEST(PriceSources, AProviderChainTriesEachServiceInTurn) {
  std::string days = "date,open,high,low,close,volume\n";
  for (int d = 10; d < 22; ++d) days += "2024-01-" + std::to_string(d) + ",1,2,0.5,1.5,100\n";
  test::LocalServer server;
  server.Answer("/v8/finance/chart/X",
                {{404, R"({"chart":{"result":null,"error":{"code":"Not Found"}}})"}});
  server.Answer("/v8/finance/chart/Y",
                {{200, R"({"chart":{"result":[{"meta":{},"indicators":{"quote":[{}]}}]}})"}});
  server.Answer("/tiingo/daily/X/prices", {{200, days}});
  server.Answer("/tiingo/daily/Y/prices", {{200, "date,open,high,low,close,volume\n"}});
  const auto chain = SourceAt("chart,tiingo", server.base());
  const FetchResult x = chain->Fetch("X", 45000, 45030);
  EXPECT_TRUE(x.ok()) << x.failure;
  EXPECT_EQ(x.servedBy, "tiingo");
  const FetchResult y = chain->Fetch("Y", 45000, 45030);
  EXPECT_FALSE(y.ok());
  EXPECT_TRUE(
      y.failure.starts_with("chart: an answer of 2 lines is too short to be price data; "
                            "tiingo: an answer of 2 lines is too short"))
      << y.failure;
}

// A service may answer anything: what a failure quotes of it is short and shows control bytes
// as escapes, so a 10 MB page or terminal escapes never reach the terminal or the event log.
TEST(PriceSources, WhatAServiceSaidIsQuotedShortAndEscaped) {
  // Built by appending: GCC's bounds warning misreads a literal joined to a long string.
  const std::string flood(10'000'000, 'x');
  std::string nulThenFlood(1, '\0');
  nulThenFlood.append(flood);
  platform::HttpResponse html;
  html.status = 200;
  html.body.append("  <html>\x1b[2J").append(nulThenFlood);
  platform::HttpResponse json;
  json.status = 404;
  json.body.append(R"({"detail":"no\u0000such\u001b[2J)").append(flood).append(R"("})");
  platform::HttpResponse failed;
  failed.status = 500;
  failed.body.append("\r\nbusy\x07").append(flood);
  const struct {
    std::string said, starts;
  } cases[] = {
      {RefusalOf(html),
       "an HTML page instead of price data (HTTP status 200): \"<html>\\x1b[2J\\x00x"},
      {RefusalOf(json), "a JSON error object (HTTP status 404): \"no\\x00such\\x1b[2Jx"},
      {RefusalOf(failed), "HTTP status 500 (Internal Server Error): \"busy\\x07x"},
      {WrongShape("no quote values", nulThenFlood),
       "an answer of the wrong shape (no quote values): \"\\x00x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.said.rfind(c.starts, 0), 0u) << c.said.substr(0, 300);
    EXPECT_LT(c.said.size(), 320u);
    EXPECT_TRUE(c.said.ends_with(" bytes in all)")) << c.said.substr(0, 300);
  }
}

TEST(PriceSources, StooqTickers) {
  const std::pair<const char*, const char*> cases[] = {{"AAPL", "aapl.us"}, {"BRK-B", "brk-b.us"},
                                                       {"^IXIC", "^ndq"},   {"^ixic", "^ndq"},
                                                       {"^N225", "^n225"},  {"BMW.DE", "bmw.de"}};
  for (const auto& [ours, theirs] : cases) EXPECT_EQ(StooqTicker(ours), theirs) << ours;
}

}  // namespace
}  // namespace halvard::data
