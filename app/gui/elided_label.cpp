#include "elided_label.h"

#include <QPainter>
#include <QStyle>

namespace halvard::gui {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().horizontalAdvance(QStringLiteral("W…")),
          QLabel::minimumSizeHint().height()};
}

QString ElidedLabel::shownText() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  const QString shown = shownText();
  // The tooltip carries the whole text only while some of it is cut off.
  const QString tip = shown == text() ? QString() : text();
  if (toolTip() != tip) setToolTip(tip);
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                        isEnabled(), shown, foregroundRole());
}

}  // namespace halvard::gui
