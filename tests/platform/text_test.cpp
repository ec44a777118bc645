#include "halvard/platform/text.h"

#include <gtest/gtest.h>

namespace halvard::platform {
namespace {

TEST(Text, TrimsCutOnlyTheCharactersAskedForAndOnlyAtTheEnds) {
  EXPECT_EQ(TrimSpaces(" \t a b \t "), "a b");
  EXPECT_EQ(TrimSpaces("\r\nx\r\n"), "\r\nx\r\n");  // line ends are no blanks of a field
  EXPECT_EQ(TrimSpaces(" \t "), "");
  EXPECT_EQ(Trim("\t AAL  ", " "), "\t AAL");  // a watch list line keeps its tab
  EXPECT_EQ(TrimStart("\r\n\v\f {\"a\"} ", kWhiteSpace), "{\"a\"} ");
  EXPECT_EQ(TrimEnd("abc123\r\n \t", kWhiteSpace), "abc123");
  EXPECT_EQ(TrimEnd("\n\n", kWhiteSpace), "");
  EXPECT_EQ(Trim("", kWhiteSpace), "");
}

TEST(Text, CaseIsIgnoredForAsciiLettersAlone) {
  EXPECT_TRUE(EqualsIgnoreCase("Retry-After", "retry-after"));
  EXPECT_TRUE(EqualsIgnoreCase("^IXIC.txt", "^ixic.TXT"));
  EXPECT_FALSE(EqualsIgnoreCase("abc", "abcd"));
  EXPECT_FALSE(EqualsIgnoreCase("[", "{"));  // 0x5B and 0x7B differ by the case bit only
  EXPECT_FALSE(EqualsIgnoreCase("\xC3\x89", "\xC3\xA9"));  // É and é: not ASCII

  EXPECT_TRUE(EndsWithIgnoreCase("tech.INC", ".inc"));
  EXPECT_TRUE(EndsWithIgnoreCase(".inc", ".inc"));
  EXPECT_FALSE(EndsWithIgnoreCase("inc", ".inc"));
  EXPECT_TRUE(EndsWithIgnoreCase("any", ""));

  EXPECT_EQ(ToLowerAscii("BRK.B ^IXIC Z9_\xC3\x89"), "brk.b ^ixic z9_\xC3\x89");
}

}  // namespace
}  // namespace halvard::platform
