#include "dialogs.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QUrl>
#include <cstdio>

namespace halvard::gui {

void QtDialogs::message(QWidget* parent, const QString& title, const QString& text, Icon icon) {
  const QMessageBox::Icon shown = icon == Icon::kInformation ? QMessageBox::Information
                                  : icon == Icon::kCritical  ? QMessageBox::Critical
                                                             : QMessageBox::NoIcon;
  QMessageBox box(shown, title, text, QMessageBox::Ok, parent);
  box.exec();
}

std::optional<QString> QtDialogs::askText(QWidget* parent, const QString& title,
                                          const QString& prompt) {
  bool ok = false;
  const QString answer = QInputDialog::getText(parent, title, prompt, QLineEdit::Normal, {}, &ok);
  if (!ok) return std::nullopt;
  return answer;
}

namespace {

QString SaveDialog(QWidget* parent, const QString& folder, const QString& filter,
                   const QString& proposedName) {
  QFileDialog dialog(parent, {}, folder, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("inc"));
  dialog.selectFile(proposedName);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

}  // namespace

QString QtDialogs::saveWatchList(QWidget* parent, const QString& folder,
                                 const QString& proposedName) {
  return SaveDialog(parent, folder, QStringLiteral("inc Files (*.inc)"), proposedName);
}

QString QtDialogs::saveReport(QWidget* parent, const QString& folder) {
  return SaveDialog(parent, folder, QStringLiteral("Text Files (*.txt)"), {});
}

QString QtDialogs::pickFolder(QWidget* parent, const QString& title, const QString& start) {
  return QFileDialog::getExistingDirectory(parent, title, start, QFileDialog::ShowDirsOnly);
}

bool QtDialogs::openWithDesktop(const QString& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void QuietDialogs::message(QWidget*, const QString& title, const QString& text, Icon) {
  std::fprintf(stderr, "halvard-gui: %s: %s\n", qPrintable(title), qPrintable(text));
}

}  // namespace halvard::gui
