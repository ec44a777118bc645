#include "halvard/runs/report_text.h"

namespace halvard::runs {

std::string RangeText(std::string_view from, std::string_view to, std::string_view step) {
  return " from " + std::string(from) + " to " + std::string(to) + " with a step of " +
         std::string(step);
}

std::string BuyModeName(int buyMode) {
  return buyMode == 1 ? "BoxTops" : "Bounce";
}

std::string BuyModeLine(int buyMode) {
  return "Buy Mode = " + BuyModeName(buyMode);
}

void SaveReport(const std::filesystem::path& file, std::string_view report) {
  ReportFile saved(file);
  saved.Append(report);
  saved.Commit();
}

void ReportFile::Commit() {
  file_.Write("\r\n");
  file_.Commit();
}

}  // namespace halvard::runs
