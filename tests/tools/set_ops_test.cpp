#include "halvard/tools/set_ops.h"

#include <gtest/gtest.h>

#include "halvard/error.h"
#include "test_support.h"

namespace halvard::tools {
namespace {

using Symbols = std::vector<std::string>;

class SetOpsTest : public ::testing::Test {
 protected:
  SetOps Read(std::string_view content) {
    test::WriteText(dir / "list.inc", content);
    SetOps set;
    set.Initialize(dir / "list.inc");
    return set;
  }

  test::TempDir dir;
};

TEST_F(SetOpsTest, UnionIntersectAndDifferenceKeepTheFirstListsOrderAndSpelling) {
  const SetOps b = Read("\"bbb\"  \r\n\r\n  DDD\r\n");  // quotes, blanks and an empty line
  EXPECT_EQ(b.members(), (Symbols{"bbb", "DDD"}));
  const auto combined = [&](void (SetOps::*op)(const SetOps&)) {
    SetOps a = Read("AAA\r\nBBB\r\nCCC\r\n");
    (a.*op)(b);
    return a.members();
  };
  EXPECT_EQ(combined(&SetOps::Union), (Symbols{"AAA", "BBB", "CCC", "DDD"}));
  EXPECT_EQ(combined(&SetOps::Intersect), (Symbols{"BBB"}));
  EXPECT_EQ(combined(&SetOps::Difference), (Symbols{"AAA", "CCC"}));
  EXPECT_TRUE(SetOps::CheckExists(b, "BBB"));
  EXPECT_FALSE(SetOps::CheckExists(b, "BB"));
}

TEST_F(SetOpsTest, AnEmptySecondListAndTheFileWritten) {
  const SetOps empty = Read("\r\n");
  SetOps a = Read("AAA\r\nCCC\r\n");
  a.Difference(empty);
  EXPECT_EQ(a.members(), (Symbols{"AAA", "CCC"}));
  a.SaveAs(dir / "out.inc");
  EXPECT_EQ(test::ReadText(dir / "out.inc"), "AAA\r\nCCC\r\n");
  a.Intersect(empty);
  a.SaveAs(dir / "out.inc");
  EXPECT_EQ(test::ReadText(dir / "out.inc"), "");
}

TEST_F(SetOpsTest, ASymbolListedTwiceOrAMissingListIsAnError) {
  EXPECT_EQ(
      test::ErrorText([&] { Read("MSFT\r\nIBM\r\nmsft\r\n"); }),
      (dir / "list.inc").string() +
          ": the symbol \"msft\" is in the list twice; remove one of them to combine the list");
  SetOps set;
  EXPECT_THROW(set.Initialize(dir / "none.inc"), Error);
}

}  // namespace
}  // namespace halvard::tools
