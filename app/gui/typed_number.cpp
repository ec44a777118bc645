#include "typed_number.h"

#include <cmath>
#include <utility>

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
  // "inf" and "nan" are refused as the settings file refuses them (they would be written and then
  // refused on the next start), while a text that is no number at all is still called that.
  auto converted = settings::DoubleFromText(text.toStdString(), settings::NonFinite::kAccepted);
  if (converted.value && !std::isfinite(*converted.value))
    converted = {std::nullopt, "a finite number"};
  return Shown(std::move(converted), text, what);
}

}  // namespace halvard::gui
