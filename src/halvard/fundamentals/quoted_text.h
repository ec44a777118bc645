#pragma once
// The cleaning of the service texts stored in the stock database: every replacement replaces
// every occurrence, with exact case.

#include <string>
#include <string_view>

namespace halvard::fundamentals {

inline std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace halvard::fundamentals
