#include "halvard/runs/json_fields.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/money_text.h"

namespace halvard::runs {

std::string IsoDate(double serial) {
  const platform::CivilDate d = platform::CivilFromSerial(serial);
  char text[48];  // room for any year the compiler can imagine: no truncation warning
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", d.year, d.month, d.day);
  return text;
}

JsonDocument DateField(double serial) {
  if (serial == 0) return nullptr;
  return IsoDate(serial);
}

double MoneyField(double amount) {
  // The text reports' own rounding, so a script and a reader see the same cents.
  std::string digits;
  for (const char c : platform::FormatFixed(amount, 2)) {
    if (c != ',') digits += c;
  }
  double value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value == 0 ? 0.0 : value;  // "-0.00" is no loss
}

double GeneralField(double value) {
  if (!std::isfinite(value)) return value;
  char buffer[40];
  const auto [end, ec] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  double rounded = value;
  if (ec == std::errc()) std::from_chars(buffer, end, rounded);
  return rounded;
}

std::string JsonText(const JsonDocument& document) {
  try {
    return document.dump();
  } catch (const nlohmann::json::type_error&) {
    throw Error("the report holds a name that is not UTF-8 text, which JSON output needs");
  }
}

}  // namespace halvard::runs
