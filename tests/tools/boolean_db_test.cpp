#include "halvard/tools/boolean_db.h"

#include <gtest/gtest.h>

#include "halvard/error.h"
#include "test_support.h"

namespace halvard::tools {
namespace {

class BooleanDBTest : public ::testing::Test {
 protected:
  SetOpRecord Current() {
    SetOpRecord r{"-", "-", "-", "-"};
    db.getCurrent(r.firstList, r.secondList, r.operation, r.result);
    return r;
  }
  std::string Status() { return db.StatusRecordText() + "|" + db.StatusCountText(); }

  test::TempDir dir;
  BooleanDB db;
};

TEST_F(BooleanDBTest, RecordsAreStoredFirstOperationSecondResultAndBrowsedWithinBounds) {
  db.ReadFile(dir / "booldb.dat");  // missing: created empty
  EXPECT_EQ(test::ReadText(dir / "booldb.dat"), "");
  EXPECT_EQ(Status(), " Edit data and add a new record by clicking Add| Empty boolean data file");
  db.AddRecord("tech.inc", "growth.inc", "union", "combined.inc");
  db.AddRecord("a.inc", "b.inc", "difference", "d");
  db.WriteFile();
  EXPECT_EQ(test::ReadText(dir / "booldb.dat"),
            "tech.inc:union:growth.inc:combined.inc\r\na.inc:difference:b.inc:d\r\n");
  EXPECT_THROW(db.AddRecord("a:b.inc", "b.inc", "union", "x.inc"), UsageError);

  db.ReadFile(dir / "booldb.dat");
  EXPECT_EQ(Current().secondList, "growth.inc");
  EXPECT_EQ(Status(), " Currently Viewing Record #1|2 Records in file ");
  db.MoveNext();
  db.MoveNext();  // stays on the last record
  EXPECT_EQ(db.position(), 1);
  db.MoveBack();
  db.MoveBack();  // before the first: nothing on view, the outputs untouched
  EXPECT_EQ(Current().firstList, "-");
  // The file still holds its records, and the count says so.
  EXPECT_EQ(Status(), " Edit data and add a new record by clicking Add|2 Records in file ");
  db.MoveNext();
  db.DeleteCurr();
  EXPECT_EQ(Current().result, "d");
  db.DeleteCurr();
  EXPECT_EQ(db.count(), 0);
  EXPECT_EQ(Status(), " Edit data and add a new record by clicking Add| Empty boolean data file");
}

// Listing the saved combinations only looks: a folder the user may not write to is fine.
TEST_F(BooleanDBTest, ReadingToLookCreatesNoFile) {
  db.ReadFile(dir / "booldb.dat", false);
  EXPECT_EQ(db.count(), 0);
  EXPECT_FALSE(std::filesystem::exists(dir / "booldb.dat"));
}

TEST_F(BooleanDBTest, AShortLineIsAnErrorNamingItsLine) {
  test::WriteText(dir / "booldb.dat", "a.inc:union:b.inc:c.inc\r\na.inc:union\r\n");
  db.ReadFile(dir / "booldb.dat");
  db.MoveNext();
  EXPECT_EQ(test::ErrorText([&] { Current(); }),
            (dir / "booldb.dat").string() +
                " line 2: \"a.inc:union\" is not first:operation:second:result (fewer than "
                "four fields)");
}

TEST_F(BooleanDBTest, RunAllReplaysEveryRecordAndAnUnknownOperationSavesTheFirstList) {
  test::WriteText(dir / "a.inc", "AAA\r\nBBB\r\n");
  test::WriteText(dir / "b.inc", "BBB\r\nCCC\r\n");
  test::WriteText(dir / "booldb.dat",
                  "a.inc:intersect:b.inc:both\r\na.inc:xor:b.inc:same.inc\r\na.inc:union:b.inc:\r\n"
                  "a.inc:Difference:b.inc:only-a.inc\r\n");
  db.ReadFile(dir / "booldb.dat");
  EXPECT_EQ(RunAll(dir.path(), db), 4);
  EXPECT_EQ(test::ReadText(dir / "both"), "BBB\r\n");  // no extension added
  // The operation is chosen as the window's drop-down chooses it, without regard to case.
  EXPECT_EQ(test::ReadText(dir / "only-a.inc"), "AAA\r\n");
  EXPECT_EQ(test::ReadText(dir / "same.inc"), "AAA\r\nBBB\r\n");
  EXPECT_EQ(RunCurr(dir.path(), {"a.inc", "b.inc", "union", ""}), 0u);  // no result name
}

}  // namespace
}  // namespace halvard::tools
