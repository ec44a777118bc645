#include "halvard/runs/auto_download.h"

#include <gtest/gtest.h>

#include "halvard/platform/date_text.h"
#include "halvard/platform/event_log.h"
#include "test_support.h"

namespace halvard::runs {
namespace {

using platform::SerialFromCivil;

// Answers every symbol with a dozen days and remembers what was asked.
class CountingSource : public data::PriceSource {
 public:
  data::FetchResult Fetch(const std::string& symbol, double from, double to) override {
    asked +=
        symbol + " " + platform::FormatShortDate(from) + "-" + platform::FormatShortDate(to) + "\n";
    std::string body = "Date,Open,High,Low,Close,Volume,Adj Close\n";
    for (int i = 0; i < 12; ++i) body += "2017-12-01,1,1,1,1,1,1\n";
    return {body, ""};
  }
  std::string asked;
};

TEST(AutoDownload, FetchesTheListsYearAndStoresOnlyTheDate) {
  test::TempDir dir;
  settings::Config config;
  config.IncFilePath = dir.path().string();
  config.showRS = true;  // a start-up value that must not be written back
  test::WriteText(dir / "a.inc", "AAL\r\nKR\r\n");
  test::WriteText(dir / "b.inc", "PKG\r\n");
  const settings::MRegistry store(dir / "settings.ini");
  CountingSource source;
  platform::MemoryEventLog log;
  data::Downloader downloader(dir.path(), source, log);
  platform::NoProgress progress;

  const double today = SerialFromCivil({2017, 12, 29});
  EXPECT_TRUE(AutoDownload({"a", "b"}, false, today, downloader, config, store, progress));
  EXPECT_EQ(source.asked,
            "AAL 12/29/2016-12/29/2017\nKR 12/29/2016-12/29/2017\nPKG 12/29/2016-12/29/2017\n");
  EXPECT_EQ(config.downloadDate.serial, today);
  EXPECT_EQ(test::ReadText(dir / "settings.ini"), "[Download]\r\nDate=12/29/2017\r\n");

  // With no list there is nothing to download, so no day is recorded as done.
  EXPECT_FALSE(AutoDownload({}, false, today + 1, downloader, config, store, progress));
  EXPECT_EQ(config.downloadDate.serial, today);
  EXPECT_EQ(test::ReadText(dir / "settings.ini"), "[Download]\r\nDate=12/29/2017\r\n");
}

}  // namespace
}  // namespace halvard::runs
