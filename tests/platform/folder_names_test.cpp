#include "halvard/platform/folder_names.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::platform {
namespace {

using test::TempDir;
using test::WriteText;

TEST(FolderNames, ReadsAFileUnderItsOwnNameOrAnotherCaseOfIt) {
  TempDir dir;
  WriteText(dir / "^IXIC.txt", "index");
  WriteText(dir / "abc.TXT", "abc");
  const FolderNames names(dir.path());
  EXPECT_EQ(names.ReadFileIfExists(dir / "^IXIC.txt"), "index");
  EXPECT_EQ(names.ReadFileIfExists(dir / "^ixic.txt"), "index");
  EXPECT_EQ(names.ReadFileIfExists(dir / "ABC.txt"), "abc");
  EXPECT_FALSE(names.ReadFileIfExists(dir / "ABD.txt").has_value());
  // The same folder named with a trailing separator, and a file of another folder.
  EXPECT_EQ(FolderNames(dir.path().string() + "/").ReadFileIfExists(dir / "abc.txt"), "abc");
  TempDir other;
  WriteText(other / "XYZ.txt", "xyz");
  EXPECT_EQ(names.ReadFileIfExists(other / "xyz.txt"), "xyz");
}

TEST(FolderNames, ListsTheFolderOnceForTheWholeRun) {
  TempDir dir;
  WriteText(dir / "A.txt", "a");
  const FolderNames names(dir.path());
  EXPECT_FALSE(names.ReadFileIfExists(dir / "B.txt").has_value());  // the listing is taken here
  WriteText(dir / "b.TXT", "b");
  // A name added since is found under its own spelling, not through the listing of the run.
  EXPECT_FALSE(names.ReadFileIfExists(dir / "B.txt").has_value());
  EXPECT_EQ(names.ReadFileIfExists(dir / "b.TXT"), "b");
  EXPECT_EQ(FolderNames(dir.path()).ReadFileIfExists(dir / "B.txt"), "b");
}

TEST(FolderNames, AFolderUnderAFileNameIsAnErrorAsForEveryRead) {
  TempDir dir;
  std::filesystem::create_directory(dir / "X.txt");
  const FolderNames names(dir.path());
  EXPECT_EQ(test::ErrorText([&] { names.ReadFileIfExists(dir / "x.txt"); }),
            (dir / "X.txt").string() + ": not a regular file");
}

}  // namespace
}  // namespace halvard::platform
