// The local screen on hand-made price files and a stock database filled here, and the list it
// saves.

#include "halvard/screener/local_screen.h"

#include <functional>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/screener/screener.h"
#include "runs/runs_fixture.h"

namespace halvard::screener {
namespace {

// A price file of `days` days, newest first: every close is `close` except the newest
// (`newest`) and the one 252 days back (`yearAgo`); the newest 63 days trade `recentVolume`,
// older days five times as much.
void Closes(const std::filesystem::path& file, int days, double newest, double yearAgo,
            double close = 18, int64_t recentVolume = 1000) {
  std::vector<std::string> lines;
  const double day0 = platform::SerialFromCivil({2017, 12, 29});
  for (int i = 0; i < days; ++i) {
    const double c = i == 0 ? newest : i == std::min(days - 1, 252) ? yearAgo : close;
    const std::string t = platform::FormatGeneral(c);
    const int64_t volume = i < 63 ? recentVolume : 5 * recentVolume;
    lines.push_back(platform::FormatShortDate(day0 - i) + "," + t + "," + t + "," + t + "," + t +
                    "," + std::to_string(volume));
  }
  test::WriteText(file, test::PriceFile(lines));
}

class LocalScreenTest : public runs::RunsTest {
 protected:
  // A: newest close 20, 16 a year back (+25%), average volume 1000; EPS 2, estimates 3 and 4.5
  // (+50% each), P/E 10.
  LocalScreenTest() {
    Closes(dir / "A.txt", 300, 20, 16);
    s.stockDb().SetStockData("A", "", 0, 0, "Oil & Gas", "NYSE", "A Co", 2, 3, 4.5);
  }
  std::vector<std::string> Screen(const ScreenCriteria& c) {
    return ScreenLocally(s, c, quiet).symbols;
  }
  platform::NoProgress quiet;
};

using Set = std::function<void(ScreenCriteria&)>;
using Symbols = std::vector<std::string>;

TEST_F(LocalScreenTest, EachLocalCriterionPassesAtItsBoundAndFailsJustBeyond) {
  struct Case {
    const char* what;
    Set atBound, beyond;
  };
  const std::vector<Case> cases = {
      {"price min", [](auto& c) { c.price.min = 20; }, [](auto& c) { c.price.min = 20.01; }},
      {"price max", [](auto& c) { c.price.max = 20; }, [](auto& c) { c.price.max = 19.99; }},
      {"volume", [](auto& c) { c.averageVolume.min = 1000; },
       [](auto& c) { c.averageVolume.min = 1000.5; }},
      {"performance", [](auto& c) { c.performance.min = 25; },
       [](auto& c) { c.performance.min = 25.01; }},
      {"eps", [](auto& c) { c.eps.min = 2; }, [](auto& c) { c.eps.min = 2.01; }},
      {"growth this year", [](auto& c) { c.epsGrowthThisYear.min = 50; },
       [](auto& c) { c.epsGrowthThisYear.min = 50.01; }},
      {"growth next year", [](auto& c) { c.epsGrowthNextYear.max = 50; },
       [](auto& c) { c.epsGrowthNextYear.max = 49.99; }},
      {"growth next year min", [](auto& c) { c.epsGrowthNextYear.min = 50; },
       [](auto& c) { c.epsGrowthNextYear.min = 50.01; }},
      {"pe", [](auto& c) { c.priceEarnings.max = 10; },
       [](auto& c) { c.priceEarnings.max = 9.99; }},
      {"industry", [](auto& c) { c.industry = " oil & GAS "; },
       [](auto& c) { c.industry = "Oil"; }},
      {"exchange", [](auto& c) { c.exchange = "nyse"; }, [](auto& c) { c.exchange = "NYSE Arca"; }},
  };
  for (const Case& k : cases) {
    ScreenCriteria c;
    k.atBound(c);
    EXPECT_EQ(Screen(c), Symbols{"A"}) << k.what << " at its bound";
    k.beyond(c);
    EXPECT_EQ(Screen(c), Symbols{}) << k.what << " just beyond";
  }
}

TEST_F(LocalScreenTest, ShortHistoriesMissingRowsAndSignsOfEPS) {
  Closes(dir / "SHORT.txt", 10, 12, 8, 10, 700);  // 10 days: +50% from the oldest, volume 700
  Closes(dir / "ONE.txt", 1, 20, 20);             // no performance at all
  Closes(dir / "NOROW.txt", 300, 20, 16);
  Closes(dir / "LOSS.txt", 300, 20, 16);
  s.stockDb().SetStockData("LOSS", "", 0, 0, "Oil & Gas", "NYSE", "", -2, -1, 0);
  s.stockDb().SetStockData("SHORT", "", 0, 0, "Oil & Gas", "NYSE", "", 0, 1, 1);

  ScreenCriteria c;
  c.performance.min = 50;
  c.averageVolume.max = 700;
  EXPECT_EQ(Screen(c), Symbols{"SHORT"});
  c = {};
  c.performance.min = -100;
  EXPECT_EQ(Screen(c), (Symbols{"A", "LOSS", "NOROW", "SHORT"})) << "one day has no performance";
  c = {};
  c.price.min = 20;
  EXPECT_EQ(Screen(c), (Symbols{"A", "LOSS", "NOROW", "ONE"})) << "no row is needed for prices";
  c.industry = "oil & gas";
  EXPECT_EQ(Screen(c), (Symbols{"A", "LOSS"})) << "no row fails the row's criteria";
  c = {};
  c.epsGrowthThisYear = {50, 50};  // a loss halved, -2 to -1, is growth; nothing grows from 0
  EXPECT_EQ(Screen(c), (Symbols{"A", "LOSS"}));
  c = {};
  c.priceEarnings.max = 1000;  // no P/E with a loss or no EPS
  EXPECT_EQ(Screen(c), Symbols{"A"});
}

TEST_F(LocalScreenTest, TheResultNamesWhatWasNotAppliedAndWhatDidNotLoad) {
  test::WriteText(dir / "BAD.txt", test::PriceFile({"12/29/2017,1,two,1,1,100"}));
  Closes(dir / "^IXIC.txt", 300, 20, 16);
  ScreenCriteria c;
  c.index = "S&P 500";
  c.beta.max = 1;
  c.price.min = 1;
  c.recommendation.min = 1;
  c.priceBook.max = 9;
  const ScreenResult r = ScreenLocally(s, c, quiet);
  EXPECT_EQ(r.symbols, Symbols{"A"}) << "the index file is no stock";
  EXPECT_EQ(r.notApplied,
            (Symbols{"index membership", "beta", "price/book ratio", "analyst recommendation"}));
  ASSERT_EQ(r.skipped.size(), 1u);
  EXPECT_NE(r.skipped[0].find("BAD.txt line 2"), std::string::npos) << r.skipped[0];

  c = {};
  c.marketCap = {10, 5};
  EXPECT_THROW(ScreenLocally(s, c, quiet), UsageError);
}

TEST_F(LocalScreenTest, ACancelStopsBetweenTwoFiles) {
  Closes(dir / "B.txt", 300, 20, 16);
  struct CancelAfterFirst : platform::Progress {
    void Step(int, int, std::string_view) override { ++steps; }
    bool Cancelled() const override { return steps > 1; }
    int steps = 0;
  } progress;
  const ScreenResult r = ScreenLocally(s, {}, progress);
  EXPECT_EQ(r.symbols, Symbols{"A"});
  EXPECT_TRUE(r.cancelled);
}

TEST_F(LocalScreenTest, ManyThreadsFindWhatOneFindsInTheSameOrder) {
  for (int i = 0; i < 40; ++i) {
    const std::string name = std::string("S").append(std::to_string(i));
    Closes(dir / (name + ".txt"), 30 + 7 * i, 10 + i % 9, 12, 18, 500 + 100 * (i % 5));
    if (i % 11 == 3)
      test::WriteText(dir / (name + ".B.txt"), test::ReadText(dir / (name + ".txt")));
    if (i % 13 == 5)
      test::WriteText(dir / std::string("X").append(name).append(".txt"), test::PriceFile({"bad"}));
  }
  Closes(dir / "^IXIC.txt", 300, 20, 16);
  ScreenCriteria c;
  c.price.min = 12;
  c.averageVolume.max = 800;
  std::string seen[2];
  for (const int jobs : {1, 4}) {
    s.config.jobs = static_cast<int16_t>(jobs);
    const ScreenResult r = ScreenLocally(s, c, quiet);
    std::string& text = seen[jobs == 1 ? 0 : 1];
    for (const std::string& symbol : r.symbols) text.append(symbol).append(" ");
    for (const std::string& skipped : r.skipped) text.append("| ").append(skipped);
  }
  EXPECT_EQ(seen[1], seen[0]);
  EXPECT_NE(seen[0].find("XS5.txt line 2"), std::string::npos) << seen[0];
}

TEST_F(LocalScreenTest, TheSymbolsAreSavedAsAWatchList) {
  test::WriteText(dir / "found.inc", "OLD\r\nLIST\r\n\r\n");
  const auto path = SaveScreenList(s, "found", {"A", "BRK"});
  EXPECT_EQ(path, dir / "found.inc");
  EXPECT_EQ(test::ReadText(path), "A\r\nBRK\r\n\r\n");
  SaveScreenList(s, "none", {});
  EXPECT_EQ(test::ReadText(dir / "none.inc"), "\r\n");
  EXPECT_THROW(SaveScreenList(s, " ", {"A"}), UsageError);
}

}  // namespace
}  // namespace halvard::screener
