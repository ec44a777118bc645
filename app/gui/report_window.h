#pragma once
// ReportWindow: a sweep window over one kind of report, which it keeps for as long as the window
// is open (so the report grows run after run): how the report runs a sweep, and which of its
// lists "Save &Inc" writes.

#include <string>

#include "main_frm.h"
#include "sweep_window.h"

namespace halvard::gui {

template <class Report>
class ReportWindow : public SweepWindow {
 public:
  using Go = void (Report::*)(const runs::RunSwitches&);
  using ListOf = const std::string& (Report::*)() const;

  ReportWindow(MainFrm& main, const Names& names, Go go, ListOf list)
      : SweepWindow(main, names), report_(main.session(), progress()), go_(go), list_(list) {}

 protected:
  Report& report() { return report_; }

  void Sweep(const runs::RunSwitches& switches) override { (report_.*go_)(switches); }
  runs::SweepLevels& levels() override { return report_.levels; }
  const std::string& reportText() const override { return report_.text(); }
  const std::string& listToSave() const override { return (report_.*list_)(); }

 private:
  Report report_;
  Go go_;
  ListOf list_;
};

// The two report windows, made over the main window's list; each deletes itself when closed.
// LiveTradingForm: what to do on the next trading day for every symbol, buy (with the stop-buy
// and stop-loss prices) or skip; "Save &Inc" writes the symbols to buy of the last pass.
SweepWindow* NewLiveWindow(MainFrm& main);
// The batch test window, "Back Testing", is in batch_window.h.

}  // namespace halvard::gui
