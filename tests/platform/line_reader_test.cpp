#include "halvard/platform/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace halvard::platform {
namespace {

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(line)) {
    lines.emplace_back(line);
    EXPECT_EQ(reader.number(), lines.size());
  }
  return lines;
}

using L = std::vector<std::string>;

TEST(LineReader, EveryKindOfLineEnd) {
  EXPECT_EQ(Lines("a\r\nb\r\n"), (L{"a", "b"}));  // a final end opens no further line
  EXPECT_EQ(Lines("a\nb"), (L{"a", "b"}));
  EXPECT_EQ(Lines("a\rb\r\nc\n\nd"), (L{"a", "b", "c", "", "d"}));
  EXPECT_EQ(Lines("a\r\r\nb"), (L{"a", "", "b"}));
  EXPECT_EQ(Lines("\r\n"), (L{""}));
  EXPECT_EQ(Lines(""), (L{}));
  EXPECT_EQ(Lines("x\r"), (L{"x"}));
  EXPECT_EQ(Lines(std::string("a\0b\nc", 5)), (L{std::string("a\0b", 3), "c"}));
}

TEST(LineReader, FieldsAreSplitAtCommasUpToTheNeededCount) {
  std::array<std::string_view, 3> f;
  EXPECT_EQ(SplitFields("a,b,c,d", f), 3u);
  EXPECT_EQ(f[2], "c");  // fields beyond the needed ones are not looked at
  EXPECT_EQ(SplitFields("a,,", f), 3u);
  EXPECT_EQ(f[1], "");
  EXPECT_EQ(SplitFields("a", f), 1u);
  EXPECT_EQ(SplitFields("", f), 1u);
}

}  // namespace
}  // namespace halvard::platform
