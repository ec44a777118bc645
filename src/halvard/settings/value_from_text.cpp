#include "halvard/settings/value_from_text.h"

#include <cmath>

#include "halvard/platform/date_text.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::settings {

namespace {

// "a whole number" or "a number", then " of " and the unit when there is one.
std::string NumberOf(std::string_view kind, std::string_view unit) {
  std::string text(kind);
  if (!unit.empty()) text.append(" of ").append(unit);
  return text;
}

}  // namespace

Converted<int> WholeFromNumber(double value, WholeRange range) {
  const double rounded = std::nearbyint(value);  // half to even
  if (!(rounded >= range.least && rounded <= range.most)) {
    return {std::nullopt, NumberOf("a whole number", range.unit) + " from " +
                              std::to_string(range.least) + " to " + std::to_string(range.most)};
  }
  return {static_cast<int>(rounded), {}};
}

Converted<int> WholeFromText(std::string_view text, WholeRange range) {
  return WholeFromNumber(platform::ParseDouble(text).value_or(NAN), range);
}

Converted<double> NumberFromText(std::string_view text, const NumberRange& range) {
  const auto number = platform::ParseDouble(text);
  if (!range.most) {
    if (number && std::isfinite(*number) && *number > range.least) return {number, {}};
    return {std::nullopt,
            NumberOf("a number", range.unit) + " above " + platform::FormatGeneral(range.least)};
  }
  if (number && *number >= range.least && *number <= *range.most) return {number, {}};
  return {std::nullopt, NumberOf("a number", range.unit) + " from " +
                            platform::FormatGeneral(range.least) + " to " +
                            platform::FormatGeneral(*range.most)};
}

Converted<int16_t> ShortFromText(std::string_view text) {
  Converted<int> whole = WholeFromText(text, {});
  if (!whole.value) return {std::nullopt, std::move(whole.expected)};
  return {static_cast<int16_t>(*whole.value), {}};
}

Converted<double> DoubleFromText(std::string_view text, NonFinite nonFinite) {
  const auto number = platform::ParseDouble(text);
  if (nonFinite == NonFinite::kAccepted) return {number, number ? "" : "a number"};
  if (!number || !std::isfinite(*number)) return {std::nullopt, "a finite number"};
  return {number, {}};
}

Converted<bool> BooleanFromText(std::string_view text) {
  const std::string_view t = platform::TrimSpaces(text);
  if (platform::EqualsIgnoreCase(t, "True")) return {true, {}};
  if (platform::EqualsIgnoreCase(t, "False")) return {false, {}};
  if (const auto number = platform::ParseDouble(t)) return {*number != 0, {}};
  return {std::nullopt, "True, False or a number"};
}

Converted<DateValue> DateFromText(std::string_view text) {
  if (const auto serial = platform::ParseDateTime(text)) return {DateValue{*serial}, {}};
  return {std::nullopt, "a date or a time of day"};
}

std::optional<double> FractionOrPercentage(double typed) {
  if (typed > 0 && typed < 1) return typed;
  if (typed > 1) return typed / 100;
  return std::nullopt;
}

std::string UnchangedMessage(std::string_view typed, std::string_view expected,
                             std::string_view what) {
  std::string message = platform::QuoteForMessage(typed);
  message.append(" is not ").append(expected).append(". ").append(what).append(" is unchanged.");
  return message;
}

}  // namespace halvard::settings
