#pragma once
// BatchWindow, "Back Testing": every symbol backtested, a table and a summary per batch, over
// every combination of the levels with the most profitable at the end; "Save &Inc" writes the
// symbols that traded. With "Walk Forward" checked, "&Run" walks forward instead: each symbol's
// history cut into folds + 1 spans, every span from the second traded with the levels most
// profitable on the spans before it. Both kinds of run add to the one report.

#include "halvard/runs/walk_forward.h"
#include "report_window.h"

class QCheckBox;
class QSpinBox;

namespace halvard::gui {

class BatchWindow : public ReportWindow<runs::WalkForwardReport> {
 public:
  explicit BatchWindow(MainFrm& main);

 protected:
  void Sweep(const runs::RunSwitches& switches) override;
  int Passes() override;

 private:
  QCheckBox* walkForward_;
  QSpinBox* folds_;
};

// Made over the main window's list; it deletes itself when closed.
SweepWindow* NewBatchWindow(MainFrm& main);

}  // namespace halvard::gui
