#include "halvard/platform/number_text.h"

#include "halvard/platform/text.h"

#include <charconv>
#include <cmath>

namespace halvard::platform {

std::string FormatGeneral(double value) {
  if (value == 0) return "0";  // also for -0, which the reports never show with a sign
  // to_chars rather than printf: a desktop front end sets the user's locale, and a decimal comma
  // must never reach a settings file, a price or a log line.
  char buffer[40];
  const auto [end, ec] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  std::string text(buffer, ec == std::errc() ? end : buffer);
  if (const size_t e = text.find('e'); e != std::string::npos) text[e] = 'E';
  return text;
}

std::string FormatRoundTrip(double value) {
  std::string text = FormatGeneral(value);
  if (!std::isfinite(value) || ParseDouble(text) == value) return text;
  char buffer[40];
  const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  text.assign(buffer, ec == std::errc() ? end : buffer);
  if (const size_t e = text.find('e'); e != std::string::npos) text[e] = 'E';
  return text;
}

namespace {

// Plain decimals such as "52.419998" (at most 15 digits, no exponent) are read as a whole
// number over a power of ten: both are exact doubles and one division rounds correctly, so the
// result is the one from_chars gives, several times faster. Prices are almost always such text.
std::optional<double> ParseShortDecimal(std::string_view text) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  size_t i = text.size() > 0 && text[0] == '-' ? 1 : 0;
  int64_t digits = 0;
  int count = 0;
  int decimals = -1;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      if (++count > 15) return {};
      digits = digits * 10 + (c - '0');
      if (decimals >= 0) ++decimals;
    } else if (c == '.' && decimals < 0) {
      decimals = 0;
    } else {
      return {};
    }
  }
  if (count == 0) return {};
  const double value = static_cast<double>(digits) / kPowers[decimals < 0 ? 0 : decimals];
  return text[0] == '-' ? -value : value;
}

// The text without spaces around it and without a leading '+'; nothing when a second sign
// follows ("++5", "+-5"), which no number is written with.
std::optional<std::string_view> WithoutPlus(std::string_view text) {
  text = TrimSpaces(text);
  if (text.empty() || text.front() != '+') return text;
  text.remove_prefix(1);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) return {};
  return text;
}

}  // namespace

std::optional<double> ParseDouble(std::string_view written) {
  const auto text = WithoutPlus(written);
  if (!text || text->empty()) return {};
  if (const auto quick = ParseShortDecimal(*text)) return quick;
  double value = 0;
  const auto [end, ec] = std::from_chars(text->data(), text->data() + text->size(), value);
  if (ec != std::errc() || end != text->data() + text->size()) return {};
  return value;
}

std::optional<int64_t> ParseWholeNumber(std::string_view written) {
  const auto text = WithoutPlus(written);
  if (!text) return {};
  int64_t whole = 0;
  const auto [end, ec] = std::from_chars(text->data(), text->data() + text->size(), whole);
  if (ec == std::errc() && end == text->data() + text->size()) return whole;
  const auto value = ParseDouble(written);
  // 2^63 is the first double beyond the range; nearbyint rounds half to even by default.
  if (!value || !std::isfinite(*value) || std::fabs(*value) >= 9223372036854775808.0) return {};
  return static_cast<int64_t>(std::nearbyint(*value));
}

}  // namespace halvard::platform
