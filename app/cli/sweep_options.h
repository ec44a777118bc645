#pragma once
// The options of the live trading window that live, batch and daily share: its three check
// boxes and the two levels prompts.

#include <string>

#include "command_line.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/sweep.h"

namespace halvard::cli {

struct SweepSwitches {
  runs::RunSwitches switches;
  std::string stopLossLevels;  // "START,STOP,STEP" as typed; empty: the current stop loss
  std::string rsLevels;        // the same for the RS days

  // The levels typed, over the given ones (one pass with the current settings).
  runs::SweepLevels Levels(runs::SweepLevels levels) const;
};

void AddSweepSwitches(Command& command, SweepSwitches& options);

}  // namespace halvard::cli
