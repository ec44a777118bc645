#include "report_window.h"
#include "halvard/runs/live_report.h"

namespace halvard::gui {

SweepWindow* NewLiveWindow(MainFrm& main) {
  return new ReportWindow<runs::LiveReport>(
      main, {"LiveTradingForm", "Live Trading", "LiveResults", "GoBtn", true},
      &runs::LiveReport::Run, &runs::LiveReport::buyList);
}

}  // namespace halvard::gui
