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

TEST(PassingSink, HandsOnWholeLinesBeforeAPieceIsFullAndLosesNothing) {
  PassingSink sink(10);
  sink.Append("held\r\n");  // appended before passing on: goes with the first piece
  Pieces to;
  sink.PassOn(to);
  sink.Append("ab");
  EXPECT_TRUE(to.pieces.empty());  // the piece has room: held
  sink.Append("cd\r");             // no room: the lines up to the last LF go, not the lone CR
  EXPECT_EQ(to.pieces, std::vector<std::string>{"held\r\n"});
  sink.Append("\nef");
  sink.Append("gh");  // exactly full: held
  EXPECT_EQ(to.pieces.size(), 1u);
  sink.Append("ijklmnop");
  EXPECT_EQ(sink.text(), "efghijklmnop");
  sink.Append("\r\nq");  // no room, but no line has ended since the last piece: held
  sink.Flush();          // the rest, the unfinished last line too
  EXPECT_EQ(to.pieces, (std::vector<std::string>{"held\r\n", "abcd\r\n", "efghijklmnop\r\nq"}));
  EXPECT_EQ(sink.text(), "");
}

}  // namespace
}  // namespace halvard::platform
