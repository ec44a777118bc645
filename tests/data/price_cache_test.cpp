#include "halvard/data/price_cache.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "halvard/data/file_parser.h"
#include "halvard/error.h"
#include "test_support.h"

namespace halvard::data {
namespace {

// Everything the loader sets, the stale bars past barCount included.
auto Loaded(const PriceSeries& s) {
  return std::tie(s.stockFilePath, s.stockSymbol, s.barCount, s.barDate, s.barOpen, s.barHigh,
                  s.barLow, s.barClose, s.barVolume, s.highestHigh, s.lowestLow, s.maxVolume,
                  s.newestDate, s.oldestDate, s.averageVolume);
}

TEST(PriceCache, AKeptFileLoadsAsTheFileDoesAndLeavesTheOlderBarsBehind) {
  const std::string longFile = (test::LongPrices() / "AMD.txt").string();
  const std::string shortFile = (test::SamplePrices() / "AAL.txt").string();
  PriceCache cache;
  const auto cached = std::make_unique<PriceSeries>();
  const auto plain = std::make_unique<PriceSeries>();
  for (int round = 0; round < 2; ++round) {  // the second round comes from the cache
    for (const std::string& file : {longFile, shortFile}) {
      ASSERT_TRUE(cache.Load(*cached, file));
      ASSERT_TRUE(LoadStockFile(*plain, file));
      EXPECT_TRUE(Loaded(*cached) == Loaded(*plain)) << file << ", round " << round;
    }
  }
  EXPECT_GT(cached->barClose[cached->barCount], 0);  // AMD's bars beyond AAL's
}

TEST(PriceCache, AChangedFileIsReadAgainAndAMissingOrBrokenOneAnswersAsTheLoader) {
  test::TempDir dir;
  const std::string file = (dir / "X.txt").string();
  test::WriteText(file, test::PriceFile({"1/3/2024,1,2,0.5,1.5,100"}));
  PriceCache cache;
  const auto s = std::make_unique<PriceSeries>();
  ASSERT_TRUE(cache.Load(*s, file));
  test::WriteText(file, test::PriceFile({"1/4/2024,3,4,2.5,3.5,200", "1/3/2024,1,2,0.5,1.5,100"}));
  ASSERT_TRUE(cache.Load(*s, file));
  EXPECT_EQ(s->barCount, 2);
  EXPECT_EQ(s->barClose[0], 3.5);

  EXPECT_FALSE(cache.Load(*s, (dir / "GONE.txt").string()));
  EXPECT_EQ(s->stockSymbol, "GONE");
  test::WriteText(file, test::PriceFile({"1/4/2024,3,x,2.5,3.5,200"}));
  EXPECT_THROW(cache.Load(*s, file), Error);
  EXPECT_THROW(cache.Load(*s, file), Error);
}

TEST(PriceCache, PastItsSizeFilesStillLoad) {
  PriceCache cache(300);  // AAL's 252 bars fit, AMD's 749 do not
  const auto s = std::make_unique<PriceSeries>();
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(cache.Load(*s, (test::SamplePrices() / "AAL.txt").string()));
    ASSERT_TRUE(cache.Load(*s, (test::LongPrices() / "AMD.txt").string()));
    EXPECT_EQ(s->barCount, 749);
  }
  EXPECT_EQ(cache.keptBars(), 252u);
}

}  // namespace
}  // namespace halvard::data
