#pragma once
// Numbers typed at a prompt or into a dialog field. They are read the way the settings file
// reads its values (a decimal point whatever the locale; a whole number rounds a fraction half
// to even), and a text that is not such a number is refused with a message that says what was
// typed and what stays, instead of stopping the program.

#include <QString>
#include <cstdint>
#include <optional>

namespace halvard::gui {

std::optional<double> TypedDouble(const QString& text);
// A whole number that fits 16 bits (-32768 to 32767).
std::optional<int16_t> TypedShort(const QString& text);

// "\"abc\" is not a number. Stop Loss Limit is unchanged."
QString NotANumberMessage(const QString& text, const QString& what);
// The same for a whole number out of range or not whole.
QString NotAWholeNumberMessage(const QString& text, const QString& what);

}  // namespace halvard::gui
