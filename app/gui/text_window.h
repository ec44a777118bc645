#pragma once
// TextWindow: a report of the program in a read-only pane of its own window, opened scrolled to
// the newest line. The backtest results and the check of the price files show in one.

#include <QDialog>
#include <string>

class QPlainTextEdit;

namespace halvard::gui {

class TextWindow : public QDialog {
  Q_OBJECT

 public:
  TextWindow(QWidget* parent, const QString& objectName, const QString& title);
  // Shows the text (CR LF line ends) and brings the window up.
  void ShowLog(const std::string& text);
  QString text() const;

 private:
  QPlainTextEdit* txtLog_;
};

}  // namespace halvard::gui
