#include "halvard/platform/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace halvard::platform {

std::string FormatGeneral(double value) {
  if (value == 0) return "0";  // also for -0, which the reports never show with a sign
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15g", value);
  std::string text = buffer;
  if (const size_t e = text.find('e'); e != std::string::npos) text[e] = 'E';
  return text;
}

std::string_view TrimSpaces(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

std::optional<double> ParseDouble(std::string_view text) {
  text = TrimSpaces(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return {};
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) return {};
  return value;
}

std::optional<int64_t> ParseWholeNumber(std::string_view text) {
  text = TrimSpaces(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int64_t whole = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (ec == std::errc() && end == text.data() + text.size()) return whole;
  const auto value = ParseDouble(text);
  // 2^63 is the first double beyond the range; nearbyint rounds half to even by default.
  if (!value || !std::isfinite(*value) || std::fabs(*value) >= 9223372036854775808.0) return {};
  return static_cast<int64_t>(std::nearbyint(*value));
}

}  // namespace halvard::platform
