#pragma once
// ElidedLabel: a one-line label that never asks for more width than it gets. A text too long
// for it ends in "…" and the whole text is its tooltip; text() is always the whole text.

#include <QLabel>

namespace halvard::gui {

class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;
  // The text as it is drawn in the current width.
  QString shownText() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace halvard::gui
