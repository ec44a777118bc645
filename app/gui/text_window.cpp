#include "text_window.h"

#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

namespace halvard::gui {

TextWindow::TextWindow(QWidget* parent, const QString& objectName, const QString& title)
    : QDialog(parent), txtLog_(new QPlainTextEdit(this)) {
  setObjectName(objectName);
  setWindowTitle(title);
  setModal(false);
  txtLog_->setObjectName(QStringLiteral("txtLog"));
  txtLog_->setReadOnly(true);
  txtLog_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(txtLog_);
  resize(560, 480);
}

void TextWindow::ShowLog(const std::string& text) {
  QString shown = QString::fromStdString(text);
  shown.remove(QLatin1Char('\r'));
  txtLog_->setPlainText(shown);
  txtLog_->verticalScrollBar()->setValue(txtLog_->verticalScrollBar()->maximum());
  show();
  raise();
}

QString TextWindow::text() const {
  return txtLog_->toPlainText();
}

}  // namespace halvard::gui
