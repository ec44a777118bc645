#include "progress_window.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace halvard::gui {

ProgressWindow::ProgressWindow(QWidget* parent)
    : QDialog(parent),
      label_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("msgboxFrm"));
  setWindowTitle(QStringLiteral("Halvard 600"));
  setModal(false);
  label_->setMinimumWidth(320);
  bar_->setFormat(QStringLiteral("%p%"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label_);
  layout->addWidget(bar_);
  layout->addWidget(cancel_, 0, Qt::AlignRight);
  connect(cancel_, &QPushButton::clicked, this, &ProgressWindow::Cancel);
}

void ProgressWindow::reject() {
  Cancel();
  QDialog::reject();
}

void ProgressWindow::Cancel() {
  cancelled_ = true;
  cancel_->setEnabled(false);
}

void ProgressWindow::Start() {
  cancelled_ = false;
  cancel_->setEnabled(true);
  label_->clear();
  bar_->setRange(0, 0);
}

void ProgressWindow::showMessage(const QString& symbol, const QString& prefix,
                                 const QString& suffix) {
  label_->setText(prefix + symbol + suffix);
  if (!isVisible()) show();
}

void ProgressWindow::Step(int done, int total, std::string_view text) {
  showMessage(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), {}, {});
  // The run's own text carries its count ("Processing stock #3 of 39"); the bar says how far
  // along it is in percent only, so no second counter can disagree with it.
  bar_->setRange(0, total);
  bar_->setValue(done);
  QCoreApplication::processEvents();
}

QString ProgressWindow::labelText() const {
  return label_->text();
}

QString ProgressWindow::barText() const {
  return bar_->text();
}

}  // namespace halvard::gui
