#include "halvard/runs/sweep.h"

#include <cmath>
#include <string>

#include "halvard/error.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/settings/value_from_text.h"

namespace halvard::runs {
namespace {

// A sweep so long that it would never end in practice is refused like an endless one.
constexpr double kMaxLevels = 100000;

std::vector<double> Parts(std::string_view answer, const char* what) {
  std::vector<double> parts;
  size_t start = 0;
  while (parts.size() < 3) {
    const size_t comma = answer.find(',', start);
    const std::string_view part = answer.substr(start, comma - start);
    const auto value = settings::DoubleFromText(part, settings::NonFinite::kAccepted).value;
    if (!value || !std::isfinite(*value)) {
      throw UsageError(std::string(what) + " " + platform::QuoteForMessage(answer) +
                       ": expected start,stop,step, and " + platform::QuoteForMessage(part) +
                       (value ? " is not a finite number" : " is not a number"));
    }
    parts.push_back(*value);
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  if (parts.size() < 3) {
    throw UsageError(std::string(what) + " " + platform::QuoteForMessage(answer) +
                     ": expected three numbers, start,stop,step");
  }
  return parts;
}

template <class T>
void CheckStep(T start, T stop, T step, const char* what) {
  if (step == 0) {
    throw UsageError(std::string(what) + ": a step of 0 would repeat the same level for ever");
  }
  const bool forward = step > 0 ? start <= stop : start >= stop;
  if (forward &&
      (start + step == start || std::fabs(static_cast<double>(stop - start) / step) > kMaxLevels)) {
    throw UsageError(std::string(what) + ": the step is too small ever to reach the stop");
  }
}

template <class T>
std::vector<T> Levels(T start, T stop, T step) {
  std::vector<T> levels;
  for (T x = start; step > 0 ? x <= stop : x >= stop; x += step) levels.push_back(x);
  return levels;
}

int RoundToInt16(double value, const char* what) {
  const settings::Converted<int> whole = settings::WholeFromNumber(value);
  if (!whole.value) {
    throw UsageError(std::string(what) + ": " + platform::FormatGeneral(value) + " is not " +
                     whole.expected);
  }
  return *whole.value;
}

}  // namespace

SweepLevels DefaultLevels(const settings::Config& config) {
  return {config.stopLossLimit, config.stopLossLimit, 1.0, config.rsDayCurr, config.rsDayCurr, 1};
}

void ParseStopLossLevels(std::string_view answer, SweepLevels& levels) {
  const auto p = Parts(answer, "stop-loss levels");
  CheckStep(p[0], p[1], p[2], "stop-loss levels");
  levels.stopLossStart = p[0];
  levels.stopLossStop = p[1];
  levels.stopLossStep = p[2];
}

void ParseRsLevels(std::string_view answer, SweepLevels& levels) {
  const auto p = Parts(answer, "RS-days levels");
  const int start = RoundToInt16(p[0], "RS-days levels");
  const int stop = RoundToInt16(p[1], "RS-days levels");
  const int step = RoundToInt16(p[2], "RS-days levels");
  CheckStep(start, stop, step, "RS-days levels");
  levels.rsStart = start;
  levels.rsStop = stop;
  levels.rsStep = step;
}

std::vector<double> StopLossLevels(const SweepLevels& l) {
  CheckStep(l.stopLossStart, l.stopLossStop, l.stopLossStep, "stop-loss levels");
  return Levels(l.stopLossStart, l.stopLossStop, l.stopLossStep);
}

std::vector<int> RsLevels(const SweepLevels& l) {
  CheckStep(l.rsStart, l.rsStop, l.rsStep, "RS-days levels");
  return Levels(l.rsStart, l.rsStop, l.rsStep);
}

}  // namespace halvard::runs
