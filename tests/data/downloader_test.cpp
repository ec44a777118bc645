#include "halvard/data/downloader.h"

#include <gtest/gtest.h>

#include "halvard/data/file_parser.h"
#include "halvard/data/stored_price_text.h"
#include "halvard/platform/date_text.h"
#include "local_server.h"
#include "test_support.h"

namespace halvard::data {
namespace {

using platform::EventType;
using platform::MemoryEventLog;
using test::ReadText;
using test::Reply;
using test::WriteText;

const double kFrom = platform::SerialFromCivil({2011, 1, 1});
const double kTo = platform::SerialFromCivil({2011, 12, 31});

// The table service on a local server, a stock folder and an event log in memory.
struct Rig {
  // The service at base instead, when given, asking with these options.
  explicit Rig(const std::string& base = "", platform::HttpOptions options = {})
      : source(base.empty() ? server.base() : base,
               std::make_unique<platform::CurlHttpClient>(options)) {}

  test::TempDir stocks;
  test::LocalServer server;
  MemoryEventLog log;
  TableSource source;
  std::string notices;  // one a line
  Downloader downloader{stocks.path(), source, log,
                        [this](const std::string& n) { notices += n + "\n"; }};

  void Serve(std::vector<Reply> replies) { server.Answer("/table.csv", std::move(replies)); }
  std::string SymbolsAsked() const {
    std::string asked;
    for (const std::string& t : server.targets()) asked += t.substr(t.rfind("&s=") + 3) + " ";
    return asked;
  }
};

// Every line of the answer that is not empty, with CR LF.
std::string WithCrLf(const std::string& body) {
  std::string text;
  size_t start = 0;
  for (size_t lf; (lf = body.find('\n', start)) != std::string::npos; start = lf + 1) {
    if (lf > start) text += body.substr(start, lf - start) + "\r\n";
  }
  return text;
}

TEST(Downloader, WritesAGenuineAnswerWithCrLfAndNoEmptyLine) {
  Rig rig;
  const std::string answer = test::GenuineAnswer("table-goog-2011.csv");  // ends "\n\n"
  rig.Serve({{200, answer}});
  EXPECT_TRUE(rig.downloader.DownloadSymbol("GOOG", kFrom, kTo, false));
  const std::string file = ReadText(rig.stocks / "GOOG.txt");
  EXPECT_EQ(file, WithCrLf(answer));
  EXPECT_TRUE(file.starts_with("Date,Open,High,Low,Close,Volume,Adj Close\r\n2011-12-30,"));
  EXPECT_EQ(file.find("\r\n\r\n"), std::string::npos);
  EXPECT_TRUE(rig.log.entries().empty());
}

TEST(Downloader, EveryStoredLineEndsWithOneCrLfWhateverTheAnswerUsed) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    Rig rig;
    std::string answer = "Date,Open,High,Low,Close,Volume,Adj Close" + end;
    std::string stored = "Date,Open,High,Low,Close,Volume,Adj Close\r\n";
    for (int day = 20; day > 8; --day) {
      const std::string line = "2011-12-" + std::to_string(day) + ",1,2,0,1,5,1";
      answer += line + end;
      stored += line + "\r\n";
    }
    answer += "stray text" + end;
    rig.Serve({{200, answer}});
    EXPECT_TRUE(rig.downloader.DownloadSymbol("X", kFrom, kTo, false)) << rig.notices;
    EXPECT_EQ(ReadText(rig.stocks / "X.txt"), stored);
  }
}

TEST(Downloader, ALongHistoryKeepsItsNewest1001DaysAndSaysSo) {
  Rig rig;
  // 4,028 days of the index, as the service would send them.
  const std::string answer = ReadText(test::LongPrices() / "^IXIC.txt");
  rig.Serve({{200, answer}});
  EXPECT_TRUE(rig.downloader.DownloadSymbol("ORCL", kFrom, kTo, false));
  EXPECT_EQ(rig.notices, "ORCL: kept the newest 1001 of 4,028 days\n");
  PriceSeries series;
  ASSERT_TRUE(LoadStockFile(series, (rig.stocks / "ORCL.txt").string()));
  EXPECT_EQ(series.barCount, 1001);
  const std::string file = ReadText(rig.stocks / "ORCL.txt");
  EXPECT_EQ(file, answer.substr(0, file.size()));  // the header and the newest days, as sent
}

TEST(Downloader, AnAnswerThatWouldNotLoadLeavesTheOldFileByteForByte) {
  std::string busy;
  for (int i = 0; i < 14; ++i) busy += "Service busy, please try again later\n";
  std::string unconvertible = "Date,Open,High,Low,Close,Volume,Adj Close\n";
  for (int day = 20; day > 8; --day)
    unconvertible += "2011-12-" + std::to_string(day) + ",1,2,0,1,5,1\n";
  unconvertible += "2011-12-08,n/a,2,0,1,5,1\n";
  const struct {
    std::string body;
    const char* why;
  } cases[] = {
      {busy, "the answer is not price data: no day line of six comma-separated fields"},
      {"\xEF\xBB\xBF<html>\n" + busy + "</html>\n", "an HTML page instead of price data"},
      {unconvertible,
       "the answer is not price data: ORCL.txt line 14: the open \"n/a\" is not a number"},
  };
  for (const auto& c : cases) {
    Rig rig;
    const std::string old = ReadText(test::LongPrices() / "AMD.txt");
    WriteText(rig.stocks / "ORCL.txt", old);
    rig.Serve({{200, c.body}});
    EXPECT_FALSE(rig.downloader.DownloadSymbol("ORCL", kFrom, kTo, false));
    EXPECT_EQ(ReadText(rig.stocks / "ORCL.txt"), old);
    EXPECT_TRUE(rig.notices.starts_with(std::string("Failed to download ORCL: ") + c.why))
        << rig.notices;
  }
}

TEST(Downloader, AFailedSymbolSaysWhyAtOnce) {
  Rig rig;
  rig.Serve({{503, ""}});
  EXPECT_FALSE(rig.downloader.DownloadSymbol("ORCL", kFrom, kTo, false));
  EXPECT_EQ(rig.notices, "Failed to download ORCL: HTTP status 503 (Service Unavailable)\n");
  EXPECT_EQ(
      rig.log.entries(),
      (std::vector<MemoryEventLog::Entry>{
          {EventType::kError, "Download of ORCL failed: HTTP status 503 (Service Unavailable)"}}));
}

TEST(Downloader, ASymbolIsANameNeverAPath) {
  Rig rig;
  rig.Serve({{200, test::GenuineAnswer("table-goog-2011.csv")}});
  const std::filesystem::path inside = rig.stocks / "in";
  std::filesystem::create_directory(inside);
  Downloader downloader(inside, rig.source, rig.log,
                        [&](const std::string& n) { rig.notices += n + "\n"; });
  for (const std::string symbol : {"../escaped", "a\\b", "", ".", "..", "A\nB"}) {
    EXPECT_FALSE(downloader.DownloadSymbol(symbol, kFrom, kTo, false)) << symbol;
  }
  EXPECT_TRUE(rig.server.targets().empty());
  EXPECT_FALSE(std::filesystem::exists(rig.stocks / "escaped.txt"));
  EXPECT_TRUE(rig.notices.starts_with(
      "Failed to download ../escaped: a symbol cannot hold \"/\" or \"\\\"\n"))
      << rig.notices;

  // In a list, the list and the line are named before anything is asked.
  WriteText(rig.stocks / "bad.inc", "GOOG\r\n\r\n../x\r\n");
  platform::NoProgress progress;
  EXPECT_EQ(test::ErrorText([&] {
              downloader.DownloadList(rig.stocks / "bad.inc", kFrom, kTo, false, progress);
            }),
            "watch list " + (rig.stocks / "bad.inc").string() +
                " line 3: \"../x\" is not a symbol: a symbol cannot hold \"/\" or \"\\\"");
  EXPECT_TRUE(rig.server.targets().empty());
}

TEST(Downloader, AShortAnswerIsLoggedAndTheOldFileKept) {
  Rig rig;
  const std::string old = ReadText(test::LongPrices() / "AMD.txt");
  WriteText(rig.stocks / "AMD.txt", old);
  // Eleven pieces: the header, nine days and the empty piece after the last LF.
  std::string shortAnswer = "Date,Open,High,Low,Close,Volume,Adj Close\n";
  for (int day = 1; day <= 9; ++day)
    shortAnswer += "2011-12-0" + std::to_string(day) + ",1,2,0,1,5,1\n";
  rig.Serve({{200, shortAnswer}});
  EXPECT_FALSE(rig.downloader.DownloadSymbol("AMD", kFrom, kTo, false));
  EXPECT_EQ(ReadText(rig.stocks / "AMD.txt"), old);
  EXPECT_EQ(rig.log.entries(),
            (std::vector<MemoryEventLog::Entry>{{EventType::kInformation, shortAnswer}}));
}

TEST(Downloader, FailuresOfTheFetchLeaveTheOldFile) {
  const std::string page = "<html>\n" + std::string(20, '\n') + "Please wait\n</html>\n";
  test::SilentServer silent;
  const struct {
    std::string base;
    Reply reply;
    const char* logged;
  } cases[] = {
      {"", {200, page, "text/html"}, "an HTML page"},  // long enough to pass for an answer
      {test::RefusingAddress(), {}, "no answer"},
      {silent.base(), {}, "no answer"},
  };
  for (const auto& c : cases) {
    Rig rig(c.base, platform::HttpOptions{std::chrono::milliseconds(300)});
    rig.Serve({c.reply});
    WriteText(rig.stocks / "GOOG.txt", "old");
    EXPECT_FALSE(rig.downloader.DownloadSymbol("GOOG", kFrom, kTo, false)) << c.logged;
    EXPECT_EQ(ReadText(rig.stocks / "GOOG.txt"), "old");
    ASSERT_EQ(rig.log.entries().size(), 1u);
    const MemoryEventLog::Entry& entry = rig.log.entries()[0];
    EXPECT_EQ(entry.type, EventType::kError);
    EXPECT_TRUE(entry.text.starts_with("Download of GOOG failed: ")) << entry.text;
    EXPECT_NE(entry.text.find(c.logged), std::string::npos) << entry.text;
  }
}

TEST(Downloader, ASkippedSymbolMakesNoRequest) {
  Rig rig;
  rig.Serve({{200, test::GenuineAnswer("table-goog-2011.csv")}});
  WriteText(rig.stocks / "goog.txt", "old");  // found whatever the case
  EXPECT_TRUE(rig.downloader.DownloadSymbol("GOOG", kFrom, kTo, true));
  EXPECT_TRUE(rig.server.targets().empty());
  EXPECT_TRUE(rig.downloader.DownloadSymbol("GOOG", kFrom, kTo, false));
  EXPECT_EQ(rig.server.targets().size(), 1u);
}

TEST(Downloader, AListGoesOnPastAFailedSymbol) {
  Rig rig;
  rig.Serve({{200, test::GenuineAnswer("table-goog-2011.csv")},
             {404, "No such symbol\n"},
             {200, test::GenuineAnswer("table-orcl-2000.csv")}});
  WriteText(rig.stocks / "list.inc", "  GOOG \r\n\r\n   \r\nNOPE\r\nORCL\r\n\r\n");
  platform::NoProgress progress;
  EXPECT_FALSE(rig.downloader.DownloadList(rig.stocks / "list.inc", kFrom, kTo, false, progress));
  EXPECT_EQ(rig.SymbolsAsked(), "GOOG NOPE ORCL ");
  EXPECT_EQ(rig.downloader.errorText(), "Failed to download NOPE\r\n");
  EXPECT_TRUE(std::filesystem::exists(rig.stocks / "GOOG.txt"));
  EXPECT_TRUE(std::filesystem::exists(rig.stocks / "ORCL.txt"));
  EXPECT_FALSE(std::filesystem::exists(rig.stocks / "NOPE.txt"));
  ASSERT_EQ(rig.log.entries().size(), 2u);
  EXPECT_EQ(rig.log.entries()[1],
            (MemoryEventLog::Entry{EventType::kError, "Failed to download NOPE"}));

  // Each symbol's outcome in the order asked, with why the failed one failed.
  ASSERT_EQ(rig.downloader.outcomes().size(), 3u);
  EXPECT_EQ(rig.downloader.outcomes()[0].symbol, "GOOG");
  EXPECT_EQ(rig.downloader.outcomes()[0].failure, "");
  EXPECT_EQ(rig.downloader.outcomes()[1].symbol, "NOPE");
  EXPECT_EQ(rig.downloader.outcomes()[1].failure,
            "HTTP status 404 (Not Found): \"No such symbol\\n\"");
  EXPECT_EQ(rig.downloader.outcomes()[2].failure, "");

  // The next list starts with a clean error text.
  WriteText(rig.stocks / "one.inc", "GOOG\r\n");
  rig.Serve({{200, test::GenuineAnswer("table-goog-2011.csv")}});
  EXPECT_TRUE(rig.downloader.DownloadList(rig.stocks / "one.inc", kFrom, kTo, false, progress));
  EXPECT_EQ(rig.downloader.errorText(), "");
}

// With Provider=chart,tiingo the event log names the service of each symbol and the summary
// counts them, in the order the services first served.
TEST(Downloader, AProviderChainSaysWhichServiceServedEachSymbol) {
  std::string days = "date,open,high,low,close,volume\n";
  for (int d = 10; d < 22; ++d) days += "2024-01-" + std::to_string(d) + ",1,2,0.5,1.5,100\n";
  std::string stamps, values;
  for (int d = 0; d < 12; ++d) {
    if (d > 0) {
      stamps += ',';
      values += ',';
    }
    stamps.append(std::to_string(1704189600 + d * 86400));
    values += '1';
  }
  const std::string chart = R"({"chart":{"result":[{"timestamp":[)" + stamps +
                            R"(],"indicators":{"quote":[{"open":[)" + values + R"(],"high":[)" +
                            values + R"(],"low":[)" + values + R"(],"close":[)" + values +
                            R"(],"volume":[)" + values + R"(]}]}}]}})";
  test::LocalServer server;
  server.Answer("/v8/finance/chart/GONE", {{404, "Not Found", "text/plain"}});
  server.Answer("/tiingo/daily/GONE/prices", {{200, days}});
  server.Answer("/v8/finance/chart/HERE", {{200, chart, "application/json"}});
  settings::ServiceSettings s = test::ServicesAt(server.base(), "chart,tiingo");
  s.tiingoToken = "KEY";
  const auto source = MakePriceSource(s);
  test::TempDir stocks;
  MemoryEventLog log;
  Downloader downloader(stocks.path(), *source, log);
  EXPECT_TRUE(downloader.DownloadSymbol("GONE", 45000, 45030, false));
  EXPECT_TRUE(downloader.DownloadSymbol("HERE", 45000, 45030, false));
  EXPECT_TRUE(downloader.DownloadSymbol("HERE", 45000, 45030, false));
  EXPECT_EQ(log.entries(), (std::vector<MemoryEventLog::Entry>{
                               {EventType::kInformation, "GONE served by tiingo"},
                               {EventType::kInformation, "HERE served by chart"},
                               {EventType::kInformation, "HERE served by chart"}}));
  EXPECT_EQ(downloader.ServedSummary(), "served by tiingo 1, chart 2");
  EXPECT_TRUE(LoadProblem(ReadText(stocks / "GONE.txt"), "GONE.txt") == std::nullopt);
}

}  // namespace
}  // namespace halvard::data
