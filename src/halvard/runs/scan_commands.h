#pragma once
// The scans as the main window's menu starts them: which settings each passes and the list name
// each proposes for its result. Both front ends start scans through this table.

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "halvard/platform/progress.h"
#include "halvard/runs/scans.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

struct ScanCommand {
  std::string_view key;      // the command line's name: "52week", "xweek", ...
  std::string_view caption;  // the menu's: "52 Week High", "X High", ...
  // The symbols that passed (see scans.h for a cancel and for an error on the way).
  std::function<ScanSymbols(Session&, platform::Progress&)> run;
  std::function<std::string(const settings::Config&)> listName;
  // The rank scans ask the stock database, not the chosen watch list.
  bool overList = true;
};

std::span<const ScanCommand> ScanCommands();

// The command of a key, or nullptr.
const ScanCommand* FindScanCommand(std::string_view key);

}  // namespace halvard::runs
