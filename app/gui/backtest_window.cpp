#include "backtest_window.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

namespace halvard::gui {

BacktestWindow::BacktestWindow(QWidget* parent)
    : QDialog(parent), txtLog_(new QPlainTextEdit(this)) {
  setObjectName(QStringLiteral("backtestResults"));
  setWindowTitle(QStringLiteral("Backtest Results"));
  setModal(false);
  txtLog_->setObjectName(QStringLiteral("txtLog"));
  txtLog_->setReadOnly(true);
  txtLog_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(txtLog_);
  resize(560, 480);
}

void BacktestWindow::ShowLog(const std::string& text) {
  QString shown = QString::fromStdString(text);
  shown.remove(QLatin1Char('\r'));
  txtLog_->setPlainText(shown);
  txtLog_->verticalScrollBar()->setValue(txtLog_->verticalScrollBar()->maximum());
  show();
  raise();
}

QString BacktestWindow::text() const {
  return txtLog_->toPlainText();
}

}  // namespace halvard::gui
