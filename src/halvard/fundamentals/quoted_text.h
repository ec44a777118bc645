#pragma once
// Text put between single quotes in the stock database's statements, and the service texts
// that go there: every replacement replaces every occurrence, with exact case.

#include <string>
#include <string_view>

namespace halvard::fundamentals {

inline std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

// The statements take text as it is, so a quote in a name must arrive doubled.
inline std::string DoubleSingleQuotes(std::string text) {
  return ReplaceAll(std::move(text), "'", "''");
}

}  // namespace halvard::fundamentals
