#include "halvard/data/price_check.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::data {
namespace {

using test::ReadText;
using test::WriteText;

// A folder with one good file, one of 1,100 days, one written with CR CR LF line ends, one
// that no rewrite can make load, and a good index file.
struct Folder {
  Folder() {
    good = test::PriceFile({"2017-12-29,1,2,0.5,1.5,100", "2017-12-28,1,2,0.5,1.5,100"});
    std::vector<std::string> days;
    for (int i = 0; i < 1100; ++i) days.push_back("12/29/2017,1,2,0.5,1.5," + std::to_string(i));
    WriteText(stocks / "GOOD.txt", good);
    WriteText(stocks / "LONG.txt", test::PriceFile(days));
    WriteText(stocks / "CRCR.txt",
              "Date,Open,High,Low,Close,Volume\r\r\n2017-12-29,1,2,0.5,1.5,100\r\r\n");
    WriteText(stocks / "BAD.txt", test::PriceFile({"2017-12-29,1,two,0.5,1.5,100"}));
    WriteText(stocks / "^IXIC.txt", good);
  }
  std::vector<CheckedFile> Check(bool fix, std::vector<std::string> names = {}, int jobs = 1) {
    platform::NoProgress progress;
    if (names.empty()) names = FolderFilesToCheck(stocks.path());
    return CheckPriceFiles(stocks.path(), names, fix, progress, jobs);
  }
  test::TempDir stocks;
  std::string good;
};

TEST(PriceCheck, NamesEveryFileTheLoaderRefusesWithItsLineAndProblem) {
  Folder f;
  const std::string bad = ReadText(f.stocks / "BAD.txt");
  const auto checked = f.Check(false);
  EXPECT_FALSE(AllLoad(checked));
  EXPECT_EQ(CheckReportText(checked),
            "BAD.txt:2: the high \"two\" is not a number\r\n"
            "CRCR.txt:2: expected at least 6 comma-separated fields, found 1\r\n"
            "LONG.txt:1003: more than 1001 day lines; a price file holds at most 1001 days\r\n"
            "5 files checked: 3 do not load\r\n");
  EXPECT_EQ(ReadText(f.stocks / "BAD.txt"), bad);  // a check alone writes nothing
}

TEST(PriceCheck, AFixRewritesWhatItCanMakeLoadAndNothingElse) {
  Folder f;
  const std::string bad = ReadText(f.stocks / "BAD.txt");
  const auto checked = f.Check(true);
  EXPECT_EQ(CheckReportText(checked),
            "BAD.txt:2: the high \"two\" is not a number\r\n"
            "CRCR.txt: fixed: rewrote the line ends (one CR LF a line, no empty line)\r\n"
            "LONG.txt: fixed: kept the newest 1001 of 1,100 days\r\n"
            "5 files checked: 1 does not load, 2 fixed\r\n");
  EXPECT_EQ(ReadText(f.stocks / "BAD.txt"), bad);
  EXPECT_EQ(ReadText(f.stocks / "CRCR.txt"),
            "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,0.5,1.5,100\r\n");
  const std::string trimmed = ReadText(f.stocks / "LONG.txt");
  EXPECT_TRUE(trimmed.ends_with(",1000\r\n"));  // the newest 1001: volumes 0 to 1000
  EXPECT_EQ(f.Check(false).size(), 5u);
  EXPECT_EQ(CheckReportText(f.Check(false)),
            "BAD.txt:2: the high \"two\" is not a number\r\n"
            "5 files checked: 1 does not load\r\n");
}

TEST(PriceCheck, ListsCheckTheirSymbolsOnceAndTheIndexFile) {
  Folder f;
  test::TempDir lists;
  WriteText(lists / "a.inc", "GOOD\r\nNOPE\r\n");
  WriteText(lists / "b.inc", "good\r\nLONG\r\n");
  const auto names = ListFilesToCheck(lists.path(), {"a", "b"});
  EXPECT_EQ(names, (std::vector<std::string>{"GOOD.txt", "NOPE.txt", "LONG.txt", "^IXIC.txt"}));
  const auto checked = f.Check(false, names);
  EXPECT_EQ(CheckReportText(checked),
            "NOPE.txt: no such file\r\n"
            "LONG.txt:1003: more than 1001 day lines; a price file holds at most 1001 days\r\n"
            "3 files checked: 1 does not load, 1 missing\r\n");

  WriteText(lists / "c.inc", "GOOD\r\n../x\r\n");
  EXPECT_EQ(test::ErrorText([&] { ListFilesToCheck(lists.path(), {"c"}); }),
            "watch list " + (lists / "c.inc").string() +
                " line 2: \"../x\" is not a symbol: a symbol cannot hold \"/\" or \"\\\"");
}

// Remembers the progress texts.
class Steps : public platform::Progress {
 public:
  void Step(int done, int, std::string_view text) override {
    seen += std::to_string(done) + " " + std::string(text) + "\n";
  }
  bool Cancelled() const override { return false; }
  std::string seen;
};

TEST(PriceCheck, SeveralThreadsFindFixAndReportAsOneDoes) {
  std::string report[2], steps[2], files[2];
  for (const int jobs : {1, 4}) {
    Folder f;
    // Missing files, one listed in other letters, and the bad ones twice over.
    const std::vector<std::string> names = {"LONG.txt", "NONE.txt",    "good.TXT", "CRCR.txt",
                                            "BAD.txt",  "MISSING.txt", "^IXIC.txt"};
    Steps progress;
    const auto checked = CheckPriceFiles(f.stocks.path(), names, true, progress, jobs);
    const int k = jobs == 1 ? 0 : 1;
    report[k] = CheckReportText(checked);
    steps[k] = progress.seen;
    for (const char* name : {"LONG.txt", "CRCR.txt", "BAD.txt", "GOOD.txt"}) {
      files[k] += ReadText(f.stocks / name);
    }
  }
  EXPECT_EQ(report[1], report[0]);
  EXPECT_EQ(steps[1], steps[0]);
  EXPECT_EQ(files[1], files[0]);
  EXPECT_NE(report[0].find("LONG.txt: fixed"), std::string::npos);
}

TEST(PriceCheck, AFileThatCannotBeReadStopsTheCheckWhereItStandsWhateverTheThreads) {
  for (const int jobs : {1, 3}) {
    Folder f;
    std::filesystem::create_directory(f.stocks / "DIR.txt");
    const std::string longBefore = ReadText(f.stocks / "LONG.txt");
    EXPECT_EQ(test::ErrorText([&] {
                f.Check(true, {"CRCR.txt", "DIR.txt", "LONG.txt"}, jobs);
              }),
              (f.stocks / "DIR.txt").string() + ": not a regular file");
    // The file before it is fixed, the one after it is not touched.
    EXPECT_EQ(ReadText(f.stocks / "CRCR.txt"),
              "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,0.5,1.5,100\r\n");
    EXPECT_EQ(ReadText(f.stocks / "LONG.txt"), longBefore) << jobs << " jobs";
  }
}

}  // namespace
}  // namespace halvard::data
