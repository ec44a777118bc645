#include "report_window.h"
#include "halvard/runs/batch_report.h"
#include "halvard/runs/live_report.h"

namespace halvard::gui {

SweepWindow* NewLiveWindow(MainFrm& main) {
  return new ReportWindow<runs::LiveReport>(
      main, {"LiveTradingForm", "Live Trading", "LiveResults", "GoBtn", true},
      &runs::LiveReport::Run, &runs::LiveReport::buyList);
}

SweepWindow* NewBatchWindow(MainFrm& main) {
  return new ReportWindow<runs::BatchReport>(
      main, {"BatchTest", "Back Testing", "Results", "GoCommand"}, &runs::BatchReport::GoCommand,
      &runs::BatchReport::tradedList);
}

}  // namespace halvard::gui
