#include "halvard/settings/folders.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "halvard/error.h"
#include "test_support.h"

namespace halvard::settings {
namespace {

namespace fs = std::filesystem;
using test::TempDir;

// Points the XDG data folder at a scratch folder for one test.
class DataHomeScope {
 public:
  explicit DataHomeScope(const fs::path& home) {
    const char* old = std::getenv("XDG_DATA_HOME");
    if (old != nullptr) old_ = old;
    ::setenv("XDG_DATA_HOME", home.c_str(), 1);
  }
  ~DataHomeScope() {
    if (old_.empty()) {
      ::unsetenv("XDG_DATA_HOME");
    } else {
      ::setenv("XDG_DATA_HOME", old_.c_str(), 1);
    }
  }

 private:
  std::string old_;
};

TEST(Folders, AFirstRunGetsTheDefaultFoldersFilledWithTheSamples) {
  TempDir home;
  DataHomeScope scope(home.path());
  Config c;
  c.StockFilePath = DefaultStockFilePath();
  c.IncFilePath = DefaultIncFilePath();
  const std::string notice = PrepareFolders(c, HALVARD_SAMPLES);
  EXPECT_NE(notice.find("with 41 sample files"), std::string::npos) << notice;
  EXPECT_TRUE(fs::exists(home / "halvard600" / "data" / "AAL.txt"));
  EXPECT_TRUE(fs::exists(home / "halvard600" / "data" / "^IXIC.txt"));
  EXPECT_TRUE(fs::exists(home / "halvard600" / "watchlists" / "sample.inc"));
  // Once they exist nothing more happens, even when the user emptied them.
  fs::remove(home / "halvard600" / "data" / "AAL.txt");
  EXPECT_EQ(PrepareFolders(c, HALVARD_SAMPLES), "");
  EXPECT_FALSE(fs::exists(home / "halvard600" / "data" / "AAL.txt"));
}

TEST(Folders, AChosenFolderThatIsMissingIsAnErrorThatSaysWhatToDo) {
  TempDir dir;
  Config c;
  c.StockFilePath = (dir / "prices").string();
  c.IncFilePath = dir.path().string();
  try {
    PrepareFolders(c, HALVARD_SAMPLES);
    FAIL() << "expected an error";
  } catch (const Error& e) {
    const std::string m = e.what();
    EXPECT_NE(m.find("stock files folder \"" + c.StockFilePath + "\" does not exist"),
              std::string::npos)
        << m;
    EXPECT_NE(m.find("--stock-dir"), std::string::npos) << m;
    EXPECT_NE(m.find(std::string(HALVARD_SAMPLES) + "/data"), std::string::npos) << m;
  }
  EXPECT_FALSE(fs::exists(dir / "prices"));  // nothing created behind the user's back
}

}  // namespace
}  // namespace halvard::settings
