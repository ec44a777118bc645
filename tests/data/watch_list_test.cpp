#include "halvard/data/watch_list.h"

#include <gtest/gtest.h>

#include "halvard/error.h"
#include "test_support.h"

namespace halvard::data {
namespace {

using Symbols = std::vector<std::string>;
using test::ReadText;
using test::TempDir;
using test::WriteText;

TEST(WatchList, ReadsTheSymbolsAndNothingElse) {
  TempDir dir;
  WriteText(dir / "a.inc", "AAL\r\n\r\n   \r\n  MSFT  \r\nAAL\r\n\"GE\"\r\n\r\n");
  EXPECT_EQ(ReadWatchList(dir / "a.inc"), (Symbols{"AAL", "MSFT", "AAL", "\"GE\""}));
  EXPECT_EQ(ReadWatchList(dir / "a.inc", Quotes::kStrip), (Symbols{"AAL", "MSFT", "AAL", "GE"}));
  WriteText(dir / "b.inc", "\" KR \"\nPKG");  // quotes go before the trim, LF ends, no last end
  EXPECT_EQ(ReadWatchList(dir / "b.inc", Quotes::kStrip), (Symbols{"KR", "PKG"}));
  EXPECT_EQ(ReadWatchList(test::TestData() / ".." / ".." / "samples" / "watchlists" / "sample.inc")
                .size(),
            40u);
}

TEST(WatchList, AMissingListIsAnErrorNamingIt) {
  TempDir dir;
  EXPECT_EQ(test::ErrorText([&] { ReadWatchList(dir / "gone.inc"); }),
            "watch list " + (dir / "gone.inc").string() + " does not exist");
}

TEST(WatchList, WritesEverySymbolWithCrLfAndOneMore) {
  TempDir dir;
  WriteWatchList(dir / "buy.inc", WatchListText({"AAL", "GE"}));
  EXPECT_EQ(ReadText(dir / "buy.inc"), "AAL\r\nGE\r\n\r\n");
  WriteWatchList(dir / "buy.inc", WatchListText({}));  // replaces the whole list
  EXPECT_EQ(ReadText(dir / "buy.inc"), "\r\n");
  EXPECT_TRUE(ReadWatchList(dir / "buy.inc").empty());
}

TEST(WatchList, ListsTheIncFilesOfAFolder) {
  TempDir dir;
  for (const char* name : {"b.inc", "a.inc", "C.INC", "notes.txt", "inc", ".inc.bak"}) {
    WriteText(dir / name, "");
  }
  std::filesystem::create_directory(dir / "folder.inc");
  EXPECT_EQ(ListWatchLists(dir.path()), (Symbols{"C.INC", "a.inc", "b.inc"}));
  EXPECT_TRUE(ListWatchLists(dir / "missing").empty());
}

TEST(WatchList, NamesOfListsAndTheirFiles) {
  EXPECT_EQ(WatchListPath("/lists", "sample"), "/lists/sample.inc");
  EXPECT_EQ(WatchListPath("/lists", "sample.inc"), "/lists/sample.inc");
  EXPECT_EQ(WatchListPath("/lists", "other/x.inc"), "other/x.inc");
}

}  // namespace
}  // namespace halvard::data
