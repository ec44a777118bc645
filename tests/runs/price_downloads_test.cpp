// The price downloads both front ends start, against a server on this machine: a watch list's
// answer and its event-log entries, and a cancel that reaches a running request through the
// run's progress.

#include "halvard/runs/price_downloads.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "local_server.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

using platform::EventType;
using platform::MemoryEventLog;

const DownloadRequest kYear{platform::SerialFromCivil({2011, 1, 1}),
                            platform::SerialFromCivil({2011, 12, 31}), false};

// Records the steps; cancelled once the server has seen as many requests as cancelAfter.
class WatchedProgress : public platform::Progress {
 public:
  explicit WatchedProgress(const test::LocalServer& server, size_t cancelAfter = SIZE_MAX)
      : server_(server), cancelAfter_(cancelAfter) {}
  void Step(int, int, std::string_view text) override { steps += std::string(text) + " "; }
  bool Cancelled() const override { return server_.targets().size() >= cancelAfter_; }
  std::string steps;

 private:
  const test::LocalServer& server_;
  size_t cancelAfter_;
};

struct Rig {
  explicit Rig(size_t cancelAfter = SIZE_MAX) : progress(server, cancelAfter) {
    services.provider = "table";
    services.tableHost = server.base();
    services.pauseMilliseconds = 0;
  }
  std::filesystem::path List(const std::string& text) {
    test::WriteText(lists / "list.inc", text);
    return lists / "list.inc";
  }
  std::vector<MemoryEventLog::Entry> ListEntries() const {
    std::vector<MemoryEventLog::Entry> found;
    for (const auto& e : log.entries()) {
      if (e.text.find("WatchList : ") != std::string::npos) found.push_back(e);
    }
    return found;
  }

  test::LocalServer server;
  test::TempDir stocks, lists;
  settings::ServiceSettings services;
  MemoryEventLog log;
  WatchedProgress progress;
};

TEST(PriceDownloads, AListOpensAndClosesInTheEventLogWithItsAnswer) {
  Rig rig;
  const std::string genuine = test::GenuineAnswer("table-goog-2011.csv");
  rig.server.Answer("/table.csv",
                    {{200, genuine}, {404, "Not Found", "text/plain"}, {200, genuine}});
  PriceDownloads downloads(rig.services, rig.stocks.path(), rig.log, rig.progress);
  const auto failed = downloads.DownloadList("three", rig.List("GOOG\r\nBAD\r\nORCL\r\n"), kYear);
  ASSERT_TRUE(failed);
  EXPECT_FALSE(failed->done);
  EXPECT_EQ(failed->text(), "Error downloading inc list - Failed to download BAD\r\n");
  EXPECT_EQ(failed->failedSymbols, std::vector<std::string>{"BAD"});
  EXPECT_EQ(rig.progress.steps, "GOOG BAD ORCL ");
  EXPECT_EQ(rig.ListEntries(),
            (std::vector<MemoryEventLog::Entry>{
                {EventType::kInformation, "Downloading WatchList : three"},
                {EventType::kInformation, "Error Downloading WatchList : three"}}));

  const auto done = downloads.DownloadList("one", rig.List("GOOG\r\n"), kYear);
  ASSERT_TRUE(done);
  EXPECT_TRUE(done->done);
  EXPECT_EQ(done->text(), "Inc List Successfully download");
  EXPECT_TRUE(done->failedSymbols.empty());  // only this list's symbols
  EXPECT_EQ(rig.ListEntries().back(),
            (MemoryEventLog::Entry{EventType::kInformation, "Done Downloading WatchList : one"}));
}

// The service holds the answer (for the whole minute of the time-out); the run's cancel stops
// the request itself, the old file stays as it was and the list is left open in the log.
TEST(PriceDownloads, TheRunsCancelStopsARunningRequest) {
  Rig rig(1);
  rig.server.Answer("/table.csv", {{200, test::GenuineAnswer("table-goog-2011.csv")}});
  rig.server.Hold();
  test::WriteText(rig.stocks / "GOOG.txt", "old");
  PriceDownloads downloads(rig.services, rig.stocks.path(), rig.log, rig.progress);
  EXPECT_FALSE(downloads.DownloadList("one", rig.List("GOOG\r\nORCL\r\n"), kYear));
  EXPECT_EQ(rig.server.targets().size(), 1u);
  EXPECT_EQ(test::ReadText(rig.stocks / "GOOG.txt"), "old");
  // The list was opened and, stopped, neither closed nor given a failed symbol.
  EXPECT_EQ(rig.log.entries(), (std::vector<MemoryEventLog::Entry>{
                                   {EventType::kInformation, "Downloading WatchList : one"}}));
}

TEST(PriceDownloads, TypedSymbolsAreStepsAndOneFailureFailsTheRun) {
  Rig rig;
  rig.server.Answer("/table.csv", {{503, "busy", "text/plain"},
                                   {200, test::GenuineAnswer("table-goog-2011.csv")}});
  rig.services.retries = 0;
  PriceDownloads downloads(rig.services, rig.stocks.path(), rig.log, rig.progress);
  EXPECT_FALSE(downloads.DownloadSymbols({"BUSY", "GOOG"}, kYear));
  EXPECT_EQ(rig.progress.steps, "BUSY GOOG ");
  EXPECT_TRUE(std::filesystem::exists(rig.stocks / "GOOG.txt"));
  EXPECT_TRUE(rig.ListEntries().empty());
}

}  // namespace
}  // namespace halvard::runs
