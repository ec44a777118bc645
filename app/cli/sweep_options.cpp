#include "sweep_options.h"

namespace halvard::cli {

runs::SweepLevels SweepSwitches::Levels(runs::SweepLevels levels) const {
  if (!stopLossLevels.empty()) runs::ParseStopLossLevels(stopLossLevels, levels);
  if (!rsLevels.empty()) runs::ParseRsLevels(rsLevels, levels);
  return levels;
}

void AddSweepSwitches(Command& command, SweepSwitches& options) {
  command.Flag("--corvane", options.switches.corvane, "Trade corvanes (\"Corvane\")");
  command.Flag("--pyramiding", options.switches.pyramidingBoxes,
               "Trade the boxes (\"Pyramiding Boxes\")");
  command.Flag("--rs", options.switches.positiveRS,
               "Buy only with positive relative strength (\"+ve Relative Strength\")");
  command.Add("--stoploss", options.stopLossLevels,
              "Stop-loss levels in dollars as START,STOP,STEP (e.g. 1,2,0.5); default: one "
              "pass at the current stop loss");
  command.Add("--rs-days", options.rsLevels,
              "RS comparison days as START,STOP,STEP (e.g. 5,10,2); default: one pass at "
              "the current RS days");
}

}  // namespace halvard::cli
