#include "halvard/platform/money_text.h"

#include <charconv>
#include <cmath>

namespace halvard::platform {
namespace {

// The magnitude of value rounded to the given decimals, as "1,234.50".
std::string GroupedMagnitude(double value, int decimals) {
  std::string digits;  // the decimal digits, with the point after the first pointAt of them
  int pointAt = 1;
  if (value != 0 && std::isfinite(value)) {
    char buffer[40];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                         std::chars_format::scientific, 14);
    const std::string_view text(buffer, static_cast<size_t>(end - buffer));
    const size_t e = text.find('e');
    digits.assign(1, text[0]);
    digits.append(text.substr(2, e - 2));
    size_t exponentAt = e + 1;
    if (text[exponentAt] == '+') ++exponentAt;
    int exponent = 0;
    std::from_chars(text.data() + exponentAt, text.data() + text.size(), exponent);
    pointAt = exponent + 1;
  } else {
    digits = "0";
  }
  if (pointAt < 1) {
    digits.insert(0, static_cast<size_t>(1 - pointAt), '0');
    pointAt = 1;
  }
  const size_t keep = static_cast<size_t>(pointAt + decimals);
  if (digits.size() <= keep) digits.append(keep + 1 - digits.size(), '0');
  const bool roundUp = digits[keep] >= '5';
  digits.resize(keep);
  if (roundUp) {
    size_t i = keep;
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i == 0) {
      digits.insert(digits.begin(), '1');
      ++pointAt;
    } else {
      ++digits[i - 1];
    }
  }
  std::string whole = digits.substr(0, static_cast<size_t>(pointAt));
  const size_t firstNonZero = whole.find_first_not_of('0');
  whole = firstNonZero == std::string::npos ? "0" : whole.substr(firstNonZero);
  std::string out;
  for (size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) out += ',';
    out += whole[i];
  }
  if (decimals > 0) {
    out += '.';
    out.append(digits, static_cast<size_t>(pointAt));
  }
  return out;
}

}  // namespace

std::string FormatMoney(double value) {
  const std::string magnitude = GroupedMagnitude(value, 2);
  return value < 0 ? "(" + magnitude + ")" : magnitude;
}

std::string FormatFixed(double value, int decimals) {
  const std::string magnitude = GroupedMagnitude(value, decimals);
  return value < 0 ? "-" + magnitude : magnitude;
}

}  // namespace halvard::platform
