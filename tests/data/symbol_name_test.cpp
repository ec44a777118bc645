#include "halvard/data/symbol_name.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace halvard::data {
namespace {

TEST(SymbolName, PathsAndControlCharactersAreNoSymbols) {
  for (const char* symbol : {"", ".", "..", "../x", "a/b", "a\\b", "A\nB", "A\tB", "\x7f"}) {
    EXPECT_NE(SymbolProblem(symbol), "") << symbol;
  }
  for (const char* symbol : {"ORCL", "^IXIC", "BRK.B", "BRK-B", "A&B", "...", "X Y"}) {
    EXPECT_EQ(SymbolProblem(symbol), "") << symbol;
  }
}

// A symbol typed or read from a list may hold anything; the refusal shows it escaped.
TEST(SymbolName, ARefusedSymbolIsQuotedWithItsControlCharactersEscaped) {
  EXPECT_EQ(test::ErrorText([] { RequireSymbolName("A\x1b[2J\nB"); }),
            "\"A\\x1b[2J\\nB\" is not a symbol: a symbol cannot hold a control character");
  EXPECT_NO_THROW(RequireSymbolName("BRK.B"));
}

TEST(SymbolName, AddressPartsEncodeWhatCouldChangeTheRequest) {
  EXPECT_EQ(AddressPart("^IXIC"), "^IXIC");
  EXPECT_EQ(AddressPart("brk.b-x_y"), "brk.b-x_y");
  EXPECT_EQ(AddressPart("A&B"), "A%26B");
  EXPECT_EQ(AddressPart("A B?c=d#e/f%"), "A%20B%3Fc%3Dd%23e%2Ff%25");
  EXPECT_EQ(AddressPart("\xC3\xA9"), "%C3%A9");
}

}  // namespace
}  // namespace halvard::data
