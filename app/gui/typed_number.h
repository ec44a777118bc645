#pragma once
// Numbers typed at a prompt or into a dialog field, read by the settings' own converters. A text
// that is not such a number is refused with a message that says what was typed and what stays,
// instead of stopping the program.

#include <QString>
#include <cstdint>
#include <optional>

namespace halvard::gui {

// The number, or without it the refusal to show:
// "\"abc\" is not a number. Stop Loss Limit is unchanged." (`what` is "Stop Loss Limit").
template <class T>
struct Typed {
  std::optional<T> value;
  QString refusal;
};

// A whole number that fits 16 bits (-32768 to 32767); a fraction rounds half to even.
Typed<int16_t> TypedShort(const QString& text, const QString& what);
Typed<double> TypedDouble(const QString& text, const QString& what);

// The same chosen by the type of the setting the number is for (its value is not read), for code
// written once for both kinds.
inline Typed<int16_t> TypedAs(int16_t, const QString& text, const QString& what) {
  return TypedShort(text, what);
}
inline Typed<double> TypedAs(double, const QString& text, const QString& what) {
  return TypedDouble(text, what);
}

}  // namespace halvard::gui
