#pragma once
// The small text helpers of the whole program: blanks cut from the ends of a text, and ASCII
// letters compared or lowered without regard to case (names of settings, files, symbols and
// header fields are ASCII; other bytes are compared as they are).

#include <string>
#include <string_view>

namespace halvard::platform {

// Spaces, tabs, line ends, vertical tabs and form feeds.
inline constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

// The text without any of the characters of cut at its start, at its end, or at both.
std::string_view TrimStart(std::string_view text, std::string_view cut);
std::string_view TrimEnd(std::string_view text, std::string_view cut);
std::string_view Trim(std::string_view text, std::string_view cut);

// Spaces and tabs cut from both ends: how settings, fields, list names and numbers are read.
// Inline, with the test written out: every field of every price file passes through here.
inline std::string_view TrimSpaces(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// Whether the text ends in the suffix, ASCII case aside (an empty suffix ends every text).
bool EndsWithIgnoreCase(std::string_view text, std::string_view suffix);

// The text with its ASCII capitals made small letters.
std::string ToLowerAscii(std::string_view text);

}  // namespace halvard::platform
