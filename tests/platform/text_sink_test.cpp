#include "halvard/platform/text_sink.h"

#include <gtest/gtest.h>

#include <vector>

namespace halvard::platform {
namespace {

// Records each piece handed on.
struct Pieces : TextSink {
  void Append(std::string_view text) override { pieces.emplace_back(text); }
  std::vector<std::string> pieces;
};

TEST(PassingSink, KeepsEverythingUntilItPassesOn) {
  PassingSink sink(8);
  sink.Append("a line that is long\r\n");
  sink.Append("more\r\n");
  EXPECT_EQ(sink.text(), "a line that is long\r\nmore\r\n");
  sink.Flush();  // nowhere to hand it: kept
  EXPECT_EQ(sink.text(), "a line that is long\r\nmore\r\n");
}

TEST(PassingSink, HandsOnWholeLinesOncePastAPieceAndLosesNothing) {
  PassingSink sink(10);
  sink.Append("held\r\n");  // appended before passing on: goes with the first piece
  Pieces to;
  sink.PassOn(to);
  sink.Append("ab");
  EXPECT_TRUE(to.pieces.empty());  // under a piece: held
  sink.Append("cd\r");             // past a piece: the lines up to the last LF, not the lone CR
  EXPECT_EQ(to.pieces, std::vector<std::string>{"held\r\n"});
  sink.Append("\nef");
  sink.Append("gh");
  sink.Append("ijklmnop");  // past a piece, but no line has ended since the last one: held
  EXPECT_EQ(sink.text(), "efghijklmnop");
  sink.Append("\r\nq");
  sink.Flush();  // the rest, the unfinished last line too
  EXPECT_EQ(to.pieces, (std::vector<std::string>{"held\r\n", "abcd\r\n", "efghijklmnop\r\n", "q"}));
  EXPECT_EQ(sink.text(), "");
}

}  // namespace
}  // namespace halvard::platform
