#include "halvard/platform/text.h"

namespace halvard::platform {
namespace {

char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

template <class Cut>
std::string_view TrimStartIf(std::string_view text, Cut cut) {
  while (!text.empty() && cut(text.front())) text.remove_prefix(1);
  return text;
}

template <class Cut>
std::string_view TrimEndIf(std::string_view text, Cut cut) {
  while (!text.empty() && cut(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

std::string_view TrimStart(std::string_view text, std::string_view cut) {
  return TrimStartIf(text, [cut](char c) { return cut.find(c) != std::string_view::npos; });
}

std::string_view TrimEnd(std::string_view text, std::string_view cut) {
  return TrimEndIf(text, [cut](char c) { return cut.find(c) != std::string_view::npos; });
}

std::string_view Trim(std::string_view text, std::string_view cut) {
  return TrimEnd(TrimStart(text, cut), cut);
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

bool EndsWithIgnoreCase(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() &&
         EqualsIgnoreCase(text.substr(text.size() - suffix.size()), suffix);
}

std::string ToLowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = LowerAscii(c);
  return lower;
}

}  // namespace halvard::platform
