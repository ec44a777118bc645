#pragma once
// How the JSON documents of the program write their values, so that scripts read every command
// alike: dates as ISO text (2017-12-29), amounts as numbers rounded to the cent as the text
// reports round them, other numbers as JSON numbers (never as the reports' formatted text), and
// the document as one line of UTF-8 text.

#include <nlohmann/json.hpp>
#include <string>

namespace halvard::runs {

using JsonDocument = nlohmann::ordered_json;

// The day of a serial date as yyyy-mm-dd; its time of day is dropped.
std::string IsoDate(double serial);

// A day count from 12/30/1899 as "2017-12-29"; day 0 (no date) is null.
JsonDocument DateField(double serial);

// An amount rounded to two decimals as the reports print it (half away from zero on its
// 15-digit decimal form), as a number: 28.69 + 0.125 gives 28.82.
double MoneyField(double amount);

// A number as the reports print it, to 15 significant digits: a sum that binary arithmetic
// made 2646.4418190000015 is 2646.441819, as the text says.
double GeneralField(double value);

// The document on one line, with no line end. A text in it that is not UTF-8 (a symbol taken
// from a file name in another encoding) cannot be written as JSON: a halvard::Error.
std::string JsonText(const JsonDocument& document);

}  // namespace halvard::runs
