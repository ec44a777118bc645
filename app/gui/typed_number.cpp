#include "typed_number.h"

#include "halvard/settings/value_from_text.h"

namespace halvard::gui {
namespace {

template <class T>
Typed<T> Shown(settings::Converted<T> converted, const QString& text, const QString& what) {
  if (converted.value) return {converted.value, {}};
  return {std::nullopt, QString::fromStdString(settings::UnchangedMessage(
                            text.toStdString(), converted.expected, what.toStdString()))};
}

}  // namespace

Typed<int16_t> TypedShort(const QString& text, const QString& what) {
  return Shown(settings::ShortFromText(text.toStdString()), text, what);
}

Typed<double> TypedDouble(const QString& text, const QString& what) {
  return Shown(settings::DoubleFromText(text.toStdString(), settings::NonFinite::kAccepted), text,
               what);
}

}  // namespace halvard::gui
