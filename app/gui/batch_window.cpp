#include "batch_window.h"

#include <QCheckBox>
#include <QSpinBox>

#include "named.h"

namespace halvard::gui {

BatchWindow::BatchWindow(MainFrm& main)
    : ReportWindow(main, {"BatchTest", "Back Testing", "Results", "GoCommand"},
                   &runs::BatchReport::GoCommand, &runs::BatchReport::tradedList),
      walkForward_(Named<QCheckBox>("WalkForwardEnabled", QStringLiteral("Walk Forward"))),
      folds_(Named<QSpinBox>("WalkForwardFolds")) {
  folds_->setRange(1, runs::kMaxFolds);
  folds_->setValue(3);
  folds_->setSuffix(QStringLiteral(" folds"));
  folds_->setToolTip(QStringLiteral("Each symbol's history is cut into one span more than this"));
  folds_->setEnabled(false);
  connect(walkForward_, &QCheckBox::toggled, folds_, &QSpinBox::setEnabled);
  AddChoice(walkForward_);
  AddChoice(folds_);
}

void BatchWindow::Sweep(const runs::RunSwitches& switches) {
  if (walkForward_->isChecked()) {
    report().WalkForward(switches, folds_->value());
  } else {
    ReportWindow::Sweep(switches);
  }
}

int BatchWindow::Passes() {
  // A walk forward goes through the list once, every level tried on each stock as it comes.
  return walkForward_->isChecked() ? 1 : ReportWindow::Passes();
}

SweepWindow* NewBatchWindow(MainFrm& main) {
  return new BatchWindow(main);
}

}  // namespace halvard::gui
