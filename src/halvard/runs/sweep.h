#pragma once
// The sweep levels shared by the live report and the batch test: a stop-loss range in dollars
// and an RS-days range, each start, stop and step. Levels run as a counting loop does: start,
// then + step while not past stop (in binary arithmetic, so 0.1,0.3,0.1 gives two levels).

#include <string_view>
#include <vector>

#include "halvard/settings/config.h"

namespace halvard::runs {

struct SweepLevels {
  double stopLossStart = 0;
  double stopLossStop = 0;
  double stopLossStep = 1;
  int rsStart = 0;
  int rsStop = 0;
  int rsStep = 1;
};

// One pass with the current settings: both ranges start and stop at the current value.
SweepLevels DefaultLevels(const settings::Config& config);

// The answers to the two levels prompts: "start,stop,step" (only the first three parts count;
// RS days round half to even). A short answer, a part that is not a number or a step that
// could never reach the stop is a halvard::UsageError.
void ParseStopLossLevels(std::string_view answer, SweepLevels& levels);
void ParseRsLevels(std::string_view answer, SweepLevels& levels);

std::vector<double> StopLossLevels(const SweepLevels& levels);
std::vector<int> RsLevels(const SweepLevels& levels);

}  // namespace halvard::runs
