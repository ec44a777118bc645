#include "halvard/platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "halvard/error.h"
#include "test_support.h"

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
  if (::geteuid() != 0) {  // root writes into read-only folders
    const fs::path file = dir / "kept.inc";
    WriteText(file, "old");
    fs::permissions(dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_THROW(WriteFileAtomically(file, "new"), Error);
    fs::permissions(dir.path(), fs::perms::owner_all);
    EXPECT_EQ(ReadText(file), "old");
  }
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

}  // namespace
}  // namespace halvard::platform
