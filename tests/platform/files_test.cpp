#include "halvard/platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <fstream>

#include "halvard/error.h"
#include "test_support.h"
#include "unprivileged.h"

namespace halvard::platform {
namespace {

namespace fs = std::filesystem;
using test::ReadText;
using test::TempDir;
using test::WriteText;

TEST(Files, FindsANameThatDiffersOnlyInCase) {
  TempDir dir;
  WriteText(dir / "^IXIC.txt", "x");
  EXPECT_EQ(ResolvePath(dir / "^IXIC.txt"), dir / "^IXIC.txt");
  EXPECT_EQ(ResolvePath(dir / "^ixic.txt"), dir / "^IXIC.txt");
  EXPECT_FALSE(ResolvePath(dir / "^ixic.tx").has_value());
  EXPECT_FALSE(ResolvePath(dir / "missing" / "a.txt").has_value());
  EXPECT_TRUE(FileExists(dir.path()));  // a folder exists too
}

TEST(Files, AtomicWriteReplacesTheWholeFileAndLeavesNothingElse) {
  TempDir dir;
  const fs::path file = dir / "list.inc";
  WriteText(file, "a much longer old content\r\n");
  ::chmod(file.c_str(), 0640);
  WriteFileAtomically(file, "new");
  EXPECT_EQ(ReadText(file), "new");
  struct stat st;
  ASSERT_EQ(::stat(file.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u);  // the mode of the file it replaced
  int entries = 0;
  for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir.path())) ++entries;
  EXPECT_EQ(entries, 1);
}

TEST(Files, AFailedWriteNamesTheFileAndKeepsTheOldOne) {
  TempDir dir;
  const std::string error =
      test::ErrorText([&] { WriteFileAtomically(dir / "nofolder" / "x.inc", "t"); });
  EXPECT_NE(error.find("nofolder/x.inc"), std::string::npos) << error;
  const fs::path file = dir / "kept.inc";
  WriteText(file, "old");
  fs::permissions(dir.path(), fs::perms(0555));  // nobody may write; anybody may look
  const std::string refused = test::AsUnprivilegedUser(
      [&] { return test::ErrorText([&] { WriteFileAtomically(file, "new"); }); });
  fs::permissions(dir.path(), fs::perms::owner_all);
  EXPECT_EQ(refused.rfind(file.string() + ": cannot create a file in its folder", 0), 0u)
      << refused;
  EXPECT_EQ(ReadText(file), "old");
}

int Entries(const fs::path& folder) {
  int entries = 0;
  for ([[maybe_unused]] const auto& e : fs::directory_iterator(folder)) ++entries;
  return entries;
}

TEST(Files, AFileWrittenInPiecesAppearsOnlyWholeAndOnlyOnCommit) {
  TempDir dir;
  const fs::path file = dir / "report.txt";
  WriteText(file, "old");
  {
    AtomicFile written(file);
    written.Write("first\r\n");
    written.Write("second\r\n");
    EXPECT_EQ(ReadText(file), "old");  // nothing shows before the end
    written.Commit();
    EXPECT_NE(test::ErrorText([&] { written.Write("late"); }), "");  // a committed file is done
  }
  EXPECT_EQ(ReadText(file), "first\r\nsecond\r\n");
  EXPECT_EQ(Entries(dir.path()), 1);
  {
    AtomicFile dropped(file);  // a cancelled run: never committed
    dropped.Write("half");
  }
  EXPECT_EQ(ReadText(file), "first\r\nsecond\r\n");
  EXPECT_EQ(Entries(dir.path()), 1);  // its temporary file is gone with it
  const std::string refused =
      test::ErrorText([&] { AtomicFile(dir / "nofolder" / "x.txt").Write("t"); });
  EXPECT_EQ(refused.rfind((dir / "nofolder" / "x.txt").string() + ": cannot create a file", 0), 0u)
      << refused;
}

TEST(Files, ReadsWholeFilesAndNamesOneThatIsMissing) {
  TempDir dir;
  std::string big(100000, 'x');
  WriteText(dir / "big", big);
  EXPECT_EQ(ReadWholeFile(dir / "big"), big);
  EXPECT_EQ(ReadWholeFile("/proc/self/comm").empty(), false);  // size 0 in stat, text inside
  const std::string error = test::ErrorText([&] { ReadWholeFile(dir / "gone.txt"); });
  EXPECT_NE(error.find("gone.txt"), std::string::npos) << error;
}

// A FIFO would wait for a writer for ever and /dev/zero never ends: neither is read at all.
TEST(Files, OnlyRegularFilesAreReadAndOnlyUpToTheLimit) {
  TempDir dir;
  ASSERT_EQ(::mkfifo((dir / "fifo.txt").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", dir / "zero.inc");
  fs::create_directory(dir / "folder.txt");
  for (const char* name : {"fifo.txt", "zero.inc", "folder.txt"}) {
    EXPECT_EQ(test::ErrorText([&] { ReadFileIfExists(dir / name); }),
              (dir / name).string() + ": not a regular file");
  }
  {
    std::ofstream big(dir / "big.txt", std::ios::binary);
    big.seekp(kMaxReadBytes);
    big.put('x');  // a sparse file one byte over the limit
  }
  EXPECT_EQ(test::ErrorText([&] { ReadWholeFile(dir / "big.txt"); }),
            (dir / "big.txt").string() + ": the file is larger than 64 MB");
}

TEST(Files, AWriteRemovesTheHourOldTemporaryFilesOfInterruptedWrites) {
  TempDir dir;
  const auto age = [&](const char* name, std::chrono::minutes minutes) {
    WriteText(dir / name, "left over");
    fs::last_write_time(dir / name, fs::file_time_type::clock::now() - minutes);
  };
  age(".AAPL.txt.Ab12Cd", std::chrono::minutes(61));  // an interrupted price download
  age(".sample.inc.x9Y8z7", std::chrono::minutes(120));
  age(".eps.dat.QwErTy", std::chrono::minutes(30));    // perhaps still being written
  age(".bashrc.backup", std::chrono::minutes(600));    // not one of ours
  age(".notes.md.Ab12Cd", std::chrono::minutes(600));  // not a kind of file the program writes
  age("AAPL.txt.Ab12Cd", std::chrono::minutes(600));
  WriteFileAtomically(dir / "list.inc", "A\r\n");
  std::vector<std::string> left;
  for (const auto& e : fs::directory_iterator(dir.path())) left.push_back(e.path().filename());
  std::sort(left.begin(), left.end());
  EXPECT_EQ(left, (std::vector<std::string>{".bashrc.backup", ".eps.dat.QwErTy", ".notes.md.Ab12Cd",
                                            "AAPL.txt.Ab12Cd", "list.inc"}));
}

}  // namespace
}  // namespace halvard::platform
