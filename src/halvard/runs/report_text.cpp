#include "halvard/runs/report_text.h"

namespace halvard::runs {

std::string RangeText(std::string_view from, std::string_view to, std::string_view step) {
  return " from " + std::string(from) + " to " + std::string(to) + " with a step of " +
         std::string(step);
}

std::string BuyModeLine(int buyMode) {
  return buyMode == 1 ? "Buy Mode = BoxTops" : "Buy Mode = Bounce";
}

}  // namespace halvard::runs
