#include "halvard/runs/list_report.h"

#include "halvard/platform/number_text.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {

ListReport::ListReport(Session& session, platform::Progress& progress)
    : levels(DefaultLevels(session.config)), s_(session), progress_(progress) {}

void ListReport::Line(std::string_view text) {
  report_.Append(text);
  report_.Append("\r\n");
}

std::string ListReport::StopLossRange() const {
  using platform::FormatGeneral;
  return RangeText(FormatGeneral(levels.stopLossStart), FormatGeneral(levels.stopLossStop),
                   FormatGeneral(levels.stopLossStep));
}

std::string ListReport::RsRange() const {
  return RangeText(std::to_string(levels.rsStart), std::to_string(levels.rsStop),
                   std::to_string(levels.rsStep));
}

bool ListReport::ForEachStock(const std::function<void()>& tested,
                              const std::function<void()>& notLoaded) {
  engine::StockView& v = s_.view();
  const int n = static_cast<int>(s_.symbols.size());
  for (int i = 0; i < n; ++i) {
    if (progress_.Cancelled()) return false;
    progress_.Step(i, n, std::to_string(i + 1) + "/" + std::to_string(n));
    if (!prices_.Load(v, s_.StockPath(s_.symbols[i]))) {
      Line(v.stockSymbol + "\tError opening stock file ");
      if (notLoaded) notLoaded();
      continue;
    }
    engine::ComputeBoxes(v, s_.config.enableGraphUpdate);
    tested();
  }
  return true;
}

}  // namespace halvard::runs
