#include "market_generator.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "halvard/data/file_parser.h"
#include "halvard/data/watch_list.h"
#include "halvard/engine/stock_view.h"
#include "halvard/platform/date_text.h"

namespace halvard::bench {
namespace {

namespace fs = std::filesystem;

class MarketGeneratorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "halvard-market-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
  }
  void TearDown() override { fs::remove_all(root_); }

  fs::path root_;
};

bool IsWholeNumber(std::string_view field) {
  return !field.empty() &&
         std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool HasTwoDecimals(std::string_view field) {
  const size_t dot = field.find('.');
  return dot != std::string_view::npos && IsWholeNumber(field.substr(0, dot)) &&
         field.size() - dot == 3 && IsWholeNumber(field.substr(dot + 1));
}

std::vector<std::string_view> Fields(std::string_view line) {
  std::vector<std::string_view> fields;
  for (size_t comma; (comma = line.find(',')) != std::string_view::npos;) {
    fields.push_back(line.substr(0, comma));
    line.remove_prefix(comma + 1);
  }
  fields.push_back(line);
  return fields;
}

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST_F(MarketGeneratorTest, EveryFileLoadsAsAPlausibleYearOfWeekdays) {
  GenerateMarket(root_, 20, 252, 7);
  const auto view = std::make_unique<engine::StockView>();
  const double newest = platform::SerialFromCivil({kNewestYear, kNewestMonth, kNewestDay});
  std::vector<std::string> files = SymbolNames(20);
  files.push_back("^IXIC");
  int spikes = 0;
  for (const std::string& name : files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(data::LoadStockFile(*view, (root_ / (name + ".txt")).string()));
    ASSERT_EQ(view->barCount, 252);
    EXPECT_EQ(view->newestDate, newest);
    for (int i = 0; i < view->barCount; ++i) {
      const auto serial = static_cast<long>(view->barDate[i]);
      EXPECT_GE(serial % 7, 2) << "day " << i << " is a weekend day";  // serial 0 is a Saturday
      if (i > 0) {
        EXPECT_LT(view->barDate[i], view->barDate[i - 1]) << "day " << i;
      }
      EXPECT_GE(view->barHigh[i], std::max(view->barOpen[i], view->barClose[i])) << "day " << i;
      EXPECT_LE(view->barLow[i], std::min(view->barOpen[i], view->barClose[i])) << "day " << i;
      EXPECT_GT(view->barLow[i], 0) << "day " << i;
      EXPECT_GT(view->barVolume[i], 0) << "day " << i;
      if (view->barVolume[i] >= 2 * view->averageVolume * 138 / 139) ++spikes;
    }
  }
  // The unusual-volume scan needs days well above the average to find anything.
  EXPECT_GT(spikes, 20);
  // Index volumes beyond 2^31, as the real composite's, so a 32-bit volume would fail the load.
  EXPECT_GT(view->maxVolume, int64_t{2147483647});
}

TEST_F(MarketGeneratorTest, FilesHaveThePriceFileLayout) {
  GenerateMarket(root_, 3, 5, 7);
  const std::string text = Read(root_ / "S0002.txt");
  const std::string header = "Date,Open,High,Low,Close,Volume,Adj Close\r\n";
  ASSERT_EQ(text.substr(0, header.size()), header);
  // Two decimals on every price, a whole volume, the adjusted close equal to the close, CR LF.
  std::string_view rest = std::string_view(text).substr(header.size());
  const std::vector<std::string> dates = {"2017-12-29", "2017-12-28", "2017-12-27", "2017-12-26",
                                          "2017-12-25"};
  for (const std::string& date : dates) {
    const size_t end = rest.find("\r\n");
    ASSERT_NE(end, std::string_view::npos) << rest;
    const std::vector<std::string_view> fields = Fields(rest.substr(0, end));
    ASSERT_EQ(fields.size(), 7u) << rest.substr(0, end);
    EXPECT_EQ(fields[0], date);
    for (const size_t price : {1, 2, 3, 4, 6})
      EXPECT_TRUE(HasTwoDecimals(fields[price])) << fields[price];
    EXPECT_TRUE(IsWholeNumber(fields[5])) << fields[5];
    EXPECT_EQ(fields[4], fields[6]);
    rest.remove_prefix(end + 2);
  }
  EXPECT_EQ(rest, "");
  EXPECT_EQ(Read(root_ / kMarketListName), "S0000\r\nS0001\r\nS0002\r\n\r\n");
  EXPECT_EQ(data::ReadWatchList(root_ / kMarketListName),
            (std::vector<std::string>{"S0000", "S0001", "S0002"}));
}

TEST_F(MarketGeneratorTest, TheSeedAloneDecidesTheOutput) {
  GenerateMarket(root_ / "a", 5, 60, 42);
  GenerateMarket(root_ / "b", 5, 60, 42);
  GenerateMarket(root_ / "c", 5, 60, 43);
  GenerateMarket(root_ / "d", 2, 60, 42);
  for (const std::string name : {"S0000.txt", "S0001.txt", "^IXIC.txt"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Read(root_ / "a" / name), Read(root_ / "b" / name));
    EXPECT_NE(Read(root_ / "a" / name), Read(root_ / "c" / name));
    // A symbol does not change when the market around it grows.
    EXPECT_EQ(Read(root_ / "a" / name), Read(root_ / "d" / name));
  }
  EXPECT_NE(Read(root_ / "a" / "S0000.txt"), Read(root_ / "a" / "S0001.txt"));
}

TEST_F(MarketGeneratorTest, EnsureMarketReusesOnlyACompleteMarketOfTheSameParameters) {
  EXPECT_TRUE(EnsureMarket(root_, 3, 10, 1));
  EXPECT_FALSE(EnsureMarket(root_, 3, 10, 1));
  EXPECT_TRUE(EnsureMarket(root_, 3, 11, 1));
  EXPECT_TRUE(EnsureMarket(root_, 3, 11, 2));
  EXPECT_TRUE(EnsureMarket(root_, 4, 11, 2));
  EXPECT_TRUE(fs::exists(root_ / "S0003.txt"));
  // A generation cut short leaves no stamp behind, so the next run starts again.
  fs::remove(root_ / "market.stamp");
  EXPECT_TRUE(EnsureMarket(root_, 4, 11, 2));
}

TEST(MarketGenerator, NamesWidenPastFourDigitsAndCountsAreChecked) {
  EXPECT_EQ(SymbolName(7, 5000), "S0007");
  EXPECT_EQ(SymbolName(9999, 10000), "S9999");
  EXPECT_EQ(SymbolName(7, 10001), "S00007");
  EXPECT_THROW(GenerateMarket("unused", 0, 10, 1), std::invalid_argument);
  EXPECT_THROW(GenerateMarket("unused", 1, 1002, 1), std::invalid_argument);
  EXPECT_THROW(GenerateMarket("unused", 1, 0, 1), std::invalid_argument);
}

}  // namespace
}  // namespace halvard::bench
