#pragma once
// Text from a file, a service or the user as an error message quotes it: between double
// quotes, at most kQuotedChars of it, control bytes written as escapes, so that a 10 MB field
// or a NUL byte never reaches a terminal or the event log as it stands.

#include <cstddef>
#include <string>
#include <string_view>

namespace halvard::platform {

inline constexpr size_t kQuotedChars = 200;

// "text" with \r, \n and \t escaped and every other control byte as \xNN; a longer text is cut
// after kQuotedChars bytes and followed by "... (N bytes in all)".
std::string QuoteForMessage(std::string_view text);

}  // namespace halvard::platform
