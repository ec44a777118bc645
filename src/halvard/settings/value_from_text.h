#pragma once
// The one reading of each kind of setting from text, whoever typed it: the settings file,
// --set and "config set", the Options dialog, the key prompts and the sweep levels. Numbers take
// a decimal point whatever the locale; a whole number rounds a fraction half to even. A text
// that does not convert gives no value and names what was expected, for the caller's message.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvard/settings/config.h"

namespace halvard::settings {

template <class T>
struct Converted {
  std::optional<T> value;
  // Without a value: what the text should have been, as every message names it
  // ("a whole number from -32768 to 32767").
  std::string expected;
};

// The whole numbers a caller takes: a 16-bit setting unless it says otherwise. A unit, when
// given, is named in what is expected ("a whole number of megabytes from 1 to 4096").
struct WholeRange {
  int least = -32768;
  int most = 32767;
  std::string_view unit = {};
};

// The finite numbers a caller takes, of a unit: from least to most, both included ("a number of
// seconds from 1 to 3600"), or without a most, any above least ("a number of seconds above 0").
struct NumberRange {
  double least = 0;
  std::optional<double> most;
  std::string_view unit;
};

// Whether "inf" and "nan" count as numbers. The settings file refuses them: they would come back
// to the sweeps and the engine's comparisons as if they were numbers. Callers that accept them
// here refuse them with a message of their own (the sweep levels, the desktop's fields).
enum class NonFinite { kRefused, kAccepted };

Converted<int16_t> ShortFromText(std::string_view text);
// A number already read, as a whole number of the range (rounded half to even).
Converted<int> WholeFromNumber(double value, WholeRange range = {});
// A text, as a whole number of the range (rounded half to even).
Converted<int> WholeFromText(std::string_view text, WholeRange range);
Converted<double> NumberFromText(std::string_view text, const NumberRange& range);
Converted<double> DoubleFromText(std::string_view text, NonFinite nonFinite);
// "True" or "False" in any case, or a number: any but 0 is true (so "10" reads as true).
Converted<bool> BooleanFromText(std::string_view text);
Converted<DateValue> DateFromText(std::string_view text);

// A fraction typed as it is or as a percentage: 0 < x < 1 is already the fraction, x > 1 is a
// percentage (50 gives 0.5); 0, below and exactly 1 give nothing, and the setting stays.
std::optional<double> FractionOrPercentage(double typed);

// "\"abc\" is not a number. Stop Loss Limit is unchanged."
std::string UnchangedMessage(std::string_view typed, std::string_view expected,
                             std::string_view what);

}  // namespace halvard::settings
