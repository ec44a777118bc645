// The evening in one procedure, on a copy of the bundled samples, against a price service on
// this machine and with the clock set by the test: the download when it is due and not when it
// is not, a symbol that fails (listed in the report, which is still written), and the reports'
// files and documents.

#include "halvard/runs/daily_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "halvard/platform/date_text.h"
#include "json_schema.h"
#include "local_server.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

double At(const char* dateTime) {
  return *platform::ParseDateTime(dateTime);
}

class DailyReportTest : public ::testing::Test {
 protected:
  DailyReportTest() : downloads(Services(), prices.path(), log, quiet) {
    for (const char* name : {"AMD.txt", "GE.txt", "KR.txt", "MU.txt", "^IXIC.txt"}) {
      fs::copy_file(test::SamplePrices() / name, prices / name);
    }
    s.config.StockFilePath = prices.path().string();
    s.config.IncFilePath = lists.path().string();
    s.StartUp();
    s.config.enableAutoDownload = true;
    s.config.downloadTime.serial = At("4:00 PM");
    s.config.downloadDate.serial = At("1/1/00");
    options.reportsFolder = reports / "daily";
  }

  settings::ServiceSettings Services() const {
    settings::ServiceSettings services;
    services.provider = "table";
    services.tableHost = server.base();
    services.pauseMilliseconds = 0;
    services.retries = 0;
    return services;
  }

  void List(const std::string& name, const std::string& text) {
    test::WriteText(lists / (name + ".inc"), text);
    options.lists.push_back(name);
  }

  DailyResult Run(const char* now) { return RunDaily(s, downloads, options, At(now), quiet); }

  std::string Report(const std::string& file) const {
    return test::ReadText(options.reportsFolder / file);
  }
  json Document(const std::string& file) const { return json::parse(Report(file)); }

  test::LocalServer server;
  test::TempDir prices, lists, reports;
  Session s{settings::MRegistry(lists / "settings.ini")};
  platform::MemoryEventLog log;
  platform::NoProgress quiet;
  PriceDownloads downloads;
  DailyOptions options;
};

TEST_F(DailyReportTest, WhenDueItDownloadsStoresTheDateAndWritesBothReports) {
  server.Answer("/table.csv", {{200, test::GenuineAnswer("table-goog-2011.csv")}});
  List("pair", "AMD\r\nGE\r\n");
  const DailyResult result = Run("11/24/2026 5:00 PM");
  EXPECT_EQ(server.targets().size(), 2u);
  EXPECT_EQ(result.download, data::ScheduleVerdict::kDue);
  EXPECT_FALSE(result.failed());
  EXPECT_NE(test::ReadText(lists / "settings.ini").find("Date=11/24/2026"), std::string::npos);

  ASSERT_EQ(result.lists.size(), 1u);
  const DailyList& pair = result.lists[0];
  EXPECT_EQ(pair.textFile, options.reportsFolder / "2026-11-24-pair.txt");
  EXPECT_EQ(pair.jsonFile, options.reportsFolder / "2026-11-24-pair.json");
  EXPECT_EQ(pair.checked, 2);
  EXPECT_EQ(pair.stale, 2);  // the service sent 2011's prices
  const std::string text = Report("2026-11-24-pair.txt");
  EXPECT_EQ(text.substr(0, text.find("Live Testing")),
            "Daily report for pair on 11/24/2026\r\n"
            "Prices downloaded for the twelve months up to 11/24/2026\r\n");
  EXPECT_NE(text.find("Starting Live Trading on 11/24/2026 for pair\r\n"), std::string::npos);
  EXPECT_EQ(text.substr(text.rfind("pair:")), "pair: 2 symbols checked, 2 with stale prices, " +
                                                  std::to_string(pair.buys.size()) +
                                                  " Buy, no failure\r\n");

  const json doc = Document("2026-11-24-pair.json");
  EXPECT_EQ(test::SchemaProblems(doc, test::DailyReportSchema()), "");
  EXPECT_EQ(doc["download"], json::parse(R"({"done":true})"));
  EXPECT_EQ(doc["report"]["passes"][0]["rows"][0]["newestDate"], "2011-12-30");

  // Later the same evening the download is done; the reports are written again.
  const DailyResult again = Run("11/24/2026 9:00 PM");
  EXPECT_EQ(server.targets().size(), 2u);
  EXPECT_EQ(again.notDownloaded, "already downloaded on 11/24/2026");
  EXPECT_EQ(Document("2026-11-24-pair.json")["download"]["reason"], again.notDownloaded);
}

TEST_F(DailyReportTest, BeforeTheDownloadTimeItReportsOnThePricesItHas) {
  options.switches = {.corvane = true, .pyramidingBoxes = true, .positiveRS = true};
  List("one", "AMD\r\nGE\r\n");
  List("two", "KR\r\nMU\r\n");
  const DailyResult result = Run("11/24/2026 3:59 PM");
  EXPECT_TRUE(server.targets().empty());
  EXPECT_EQ(result.notDownloaded, "the download time 4:00:00 PM has not passed yet");
  EXPECT_EQ(s.config.downloadDate.serial, At("1/1/00"));
  EXPECT_FALSE(result.failed());
  ASSERT_EQ(result.lists.size(), 2u);
  EXPECT_EQ(DailySummaryLine(result.lists[1]), "two: 2 symbols checked, 2 with stale prices, " +
                                                   std::to_string(result.lists[1].buys.size()) +
                                                   " Buy, no failure");
  EXPECT_NE(Report("2026-11-24-one.txt").find("Prices not downloaded: " + result.notDownloaded),
            std::string::npos);

  // The Buy rows printed are the reports' own, newest signal first.
  std::vector<std::string> fromReports;
  for (const char* list : {"one", "two"}) {
    const json doc = Document(std::string("2026-11-24-") + list + ".json");
    for (const json& row : doc["report"]["passes"][0]["rows"]) {
      if (row["action"] == "Buy") fromReports.push_back(row["symbol"]);
    }
  }
  std::vector<std::string> printed;
  const std::vector<DailyBuy> buys = BuysNewestFirst(result);
  for (const DailyBuy& b : buys) printed.push_back(b.row.symbol);
  std::sort(printed.begin(), printed.end());
  std::sort(fromReports.begin(), fromReports.end());
  ASSERT_FALSE(printed.empty());
  EXPECT_EQ(printed, fromReports);
  for (size_t i = 1; i < buys.size(); ++i) {
    EXPECT_GE(buys[i - 1].row.signalDate, buys[i].row.signalDate);
  }
}

TEST_F(DailyReportTest, AFailingSymbolFailsTheRunAndIsListedInTheReportStillWritten) {
  server.Answer("/table.csv", {{200, test::GenuineAnswer("table-goog-2011.csv")},
                               {404, "Not Found", "text/plain"}});
  List("pair", "AMD\r\nBAD\r\n");
  const DailyResult result = Run("11/24/2026 5:00 PM");
  EXPECT_TRUE(result.failed());
  const std::vector<std::string> failures{"Failed to download BAD",
                                          "BAD: Error opening stock file"};
  EXPECT_EQ(result.lists.at(0).failures, failures);
  const std::string text = Report("2026-11-24-pair.txt");
  EXPECT_EQ(text.substr(text.rfind("pair:")),
            "pair: 2 symbols checked, 1 with stale prices, 0 Buy, 2 failures\r\n"
            "Failures:\r\nFailed to download BAD\r\nBAD: Error opening stock file\r\n");
  const json doc = Document("2026-11-24-pair.json");
  EXPECT_EQ(test::SchemaProblems(doc, test::DailyReportSchema()), "");
  EXPECT_EQ(doc["failures"], json(failures));
}

TEST_F(DailyReportTest, APriceFileThatDoesNotLoadEndsItsListsReportWhichIsStillWritten) {
  test::WriteText(prices / "BROKEN.txt", test::PriceFile({"2017-12-29,1,two,0.5,1.5,100"}));
  List("bad", "AMD\r\nBROKEN\r\nGE\r\n");
  List("good", "KR\r\n");
  const DailyResult result = Run("11/24/2026 3:00 PM");
  EXPECT_TRUE(result.failed());
  ASSERT_EQ(result.lists.size(), 2u);
  const DailyList& bad = result.lists[0];
  EXPECT_EQ(bad.checked, 1);
  ASSERT_EQ(bad.failures.size(), 1u);
  EXPECT_NE(bad.failures[0].find("BROKEN.txt line 2: the high \"two\" is not a number"),
            std::string::npos);
  const std::string text = Report("2026-11-24-bad.txt");
  EXPECT_NE(text.find("AMD\t"), std::string::npos);
  EXPECT_EQ(text.find("GE\t"), std::string::npos);
  EXPECT_NE(text.find("Failures:\r\n" + bad.failures[0] + "\r\n"), std::string::npos);
  EXPECT_TRUE(result.lists[1].failures.empty());
}

TEST_F(DailyReportTest, AReportThatCannotBeWrittenIsAFailureAndTheOtherListsGoOn) {
  test::WriteText(reports / "daily", "a file where the folder should be");
  List("one", "AMD\r\n");
  List("two", "GE\r\n");
  const DailyResult result = Run("11/24/2026 3:00 PM");
  EXPECT_TRUE(result.failed());
  ASSERT_EQ(result.lists.size(), 2u);
  for (const DailyList& list : result.lists) {
    EXPECT_EQ(list.failures.size(), 2u);  // the text and the JSON
    EXPECT_TRUE(list.textFile.empty());
  }
}

TEST_F(DailyReportTest, AMissingListStopsBeforeAnyDownloadOrFile) {
  server.Answer("/table.csv", {{200, test::GenuineAnswer("table-goog-2011.csv")}});
  List("pair", "AMD\r\n");
  options.lists.push_back("gone");
  EXPECT_NE(test::ErrorText([&] { Run("11/24/2026 5:00 PM"); }).find("gone.inc"),
            std::string::npos);
  EXPECT_TRUE(server.targets().empty());
  EXPECT_FALSE(fs::exists(options.reportsFolder));
}

// Cancelled once it has taken `steps` steps.
class CancelAfter : public platform::Progress {
 public:
  explicit CancelAfter(int steps) : left_(steps) {}
  void Step(int, int, std::string_view) override { --left_; }
  bool Cancelled() const override { return left_ <= 0; }

 private:
  int left_;
};

TEST_F(DailyReportTest, ACancelKeepsTheReportsWrittenAndWritesNoneForTheListItStoppedIn) {
  List("one", "AMD\r\nGE\r\n");
  List("two", "KR\r\nMU\r\n");
  CancelAfter third(3);  // the first stock of the second list
  const DailyResult result = RunDaily(s, downloads, options, At("11/24/2026 3:00 PM"), third);
  EXPECT_TRUE(result.cancelled);
  ASSERT_EQ(result.lists.size(), 1u);
  EXPECT_TRUE(fs::exists(options.reportsFolder / "2026-11-24-one.txt"));
  EXPECT_FALSE(fs::exists(options.reportsFolder / "2026-11-24-two.txt"));
  EXPECT_FALSE(fs::exists(options.reportsFolder / "2026-11-24-two.json"));
}

TEST(DailyBuys, NewestSignalFirstAndTheListsOrderWithinADay) {
  DailyResult result;
  const auto buy = [](const char* symbol, const char* day) {
    return LiveRow{.symbol = symbol, .action = LiveRow::Action::kBuy, .signalDate = At(day)};
  };
  const auto list = [](const char* name, std::vector<LiveRow> buys) {
    DailyList made;
    made.name = name;
    made.buys = std::move(buys);
    return made;
  };
  result.lists.push_back(list("a", {buy("OLD", "1/2/2017"), buy("NEW", "3/1/2017")}));
  result.lists.push_back(list("b", {buy("MID", "2/1/2017"), buy("TIE", "3/1/2017")}));
  std::string order;
  for (const DailyBuy& b : BuysNewestFirst(result)) order += b.list + ":" + b.row.symbol + " ";
  EXPECT_EQ(order, "a:NEW b:TIE b:MID a:OLD ");
}

}  // namespace
}  // namespace halvard::runs
