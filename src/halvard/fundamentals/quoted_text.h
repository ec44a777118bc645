#pragma once
// The cleaning of the service texts stored in the stock database: every replacement replaces
// every occurrence, with exact case.

#include <string>
#include <string_view>

namespace halvard::fundamentals {

inline std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(text);  // nothing to find; find("") would match forever
  std::string out;
  size_t start = 0;
  for (size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, start)) {
    out.append(text.substr(start, at - start)).append(to);
    start = at + from.size();
  }
  return out.append(text.substr(start));
}

}  // namespace halvard::fundamentals
