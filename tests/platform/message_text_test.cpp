#include "halvard/platform/message_text.h"

#include <gtest/gtest.h>

namespace halvard::platform {
namespace {

TEST(MessageText, ControlBytesAreEscapedAndLongTextIsCut) {
  using namespace std::string_literals;
  EXPECT_EQ(QuoteForMessage("2x"), "\"2x\"");
  EXPECT_EQ(QuoteForMessage("a\0b\r\n\t\x1b[31m\x7f"s), "\"a\\x00b\\r\\n\\t\\x1b[31m\\x7f\"");
  EXPECT_EQ(QuoteForMessage("caf\xc3\xa9"), "\"caf\xc3\xa9\"");  // text beyond ASCII as it is
  const std::string field(10'000'000, '9');
  EXPECT_EQ(QuoteForMessage(field), "\"" + std::string(200, '9') + "\"... (10000000 bytes in all)");
  EXPECT_EQ(QuoteForMessage(std::string(200, 'x')), "\"" + std::string(200, 'x') + "\"");
}

}  // namespace
}  // namespace halvard::platform
