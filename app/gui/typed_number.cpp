#include "typed_number.h"

#include <limits>

#include "halvard/platform/message_text.h"
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

namespace {

// What the user typed as the message quotes it: a pasted page is cut short, control
// characters are escaped.
QString Quoted(const QString& text) {
  return QString::fromStdString(platform::QuoteForMessage(text.toStdString()));
}

}  // namespace

QString NotANumberMessage(const QString& text, const QString& what) {
  return QStringLiteral("%1 is not a number. %2 is unchanged.").arg(Quoted(text), what);
}

QString NotAWholeNumberMessage(const QString& text, const QString& what) {
  return QStringLiteral("%1 is not a whole number from -32768 to 32767. %2 is unchanged.")
      .arg(Quoted(text), what);
}

}  // namespace halvard::gui
