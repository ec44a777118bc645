#include "typed_number.h"

#include <limits>

#include "halvard/platform/number_text.h"

namespace halvard::gui {

std::optional<double> TypedDouble(const QString& text) {
  return platform::ParseDouble(text.toStdString());
}

std::optional<int16_t> TypedShort(const QString& text) {
  const std::optional<int64_t> n = platform::ParseWholeNumber(text.toStdString());
  if (!n || *n < std::numeric_limits<int16_t>::min() || *n > std::numeric_limits<int16_t>::max())
    return std::nullopt;
  return static_cast<int16_t>(*n);
}

QString NotANumberMessage(const QString& text, const QString& what) {
  return QStringLiteral("\"%1\" is not a number. %2 is unchanged.").arg(text, what);
}

QString NotAWholeNumberMessage(const QString& text, const QString& what) {
  return QStringLiteral("\"%1\" is not a whole number from -32768 to 32767. %2 is unchanged.")
      .arg(text, what);
}

}  // namespace halvard::gui
