#pragma once
// BacktestWindow: the backtest results window, showing the log pane of the backtests run from
// the main window ("m", "g", BackTest Current). The pane keeps every run's lines; the window
// opens scrolled to the newest.

#include <QDialog>
#include <string>

class QPlainTextEdit;

namespace halvard::gui {

class BacktestWindow : public QDialog {
  Q_OBJECT

 public:
  explicit BacktestWindow(QWidget* parent = nullptr);
  // Shows the pane's text (CR LF line ends) and brings the window up.
  void ShowLog(const std::string& text);
  QString text() const;

 private:
  QPlainTextEdit* txtLog_;
};

}  // namespace halvard::gui
