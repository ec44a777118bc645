#pragma once
// How every command of the command line starts: the settings file, the folder options, the
// start-up of the main window (without windows) and the --set overrides.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "halvard/runs/session.h"
#include "halvard/settings/services.h"

namespace halvard::cli {

struct GlobalOptions {
  std::string configFile;
  std::string stockDir;
  std::string listDir;
  std::vector<std::string> sets;  // "Section/Value Name=text"
  // --jobs N of a command over a list, 0 when not given. Filled in while the command line is
  // parsed, as the options of the commands are (the commands hold this struct as const).
  mutable int jobs = 0;
};

enum class StartMode {
  kSettingsOnly,  // the config commands: the store as it is, nothing forced or loaded
  kFoldersOnly,   // the check command: folders checked, no file loaded (a bad one is its finding)
  kFull,          // every other command: folders checked, start-up values forced, index loaded
  kIndexMayFail,  // the downloads: as kFull, but an index file that does not load is a warning,
                  // so a broken ^IXIC.txt can be downloaded again to mend it
};

// Starts the session as runs::StartSession does, with --stock-dir/--list-dir for this run and
// the steps the mode asks, then applies --set and --jobs (as "Batch/Jobs=N", for this run only).
// The first run's notice and the warnings go to stderr; any other failure is thrown.
std::unique_ptr<runs::Session> OpenSession(const GlobalOptions& options, StartMode mode);

// The [Services] section of the session's settings file with the --set "Services/..."
// overrides applied (OpenSession leaves those to this).
settings::ServiceSettings OpenServices(const GlobalOptions& options, const runs::Session& session);

// Prints the warning of settings::ProtectServiceKeys on stderr when the settings file holding a
// key was readable by others (and is not any more).
void WarnIfKeysWereExposed(const runs::Session& session);

// Shows the symbol as the main window does (load, RS line); no price file is a halvard::Error
// naming the file.
void ShowSymbolOrFail(runs::Session& session, const std::string& symbol);

// Selects the list for a run (the main window's selection: row 0 shown) and warns on stderr when
// its prices look stale ("halvard: warning: newest prices are from 12/29/2017").
void SelectListWarningIfStale(runs::Session& session, const std::string& list);

// The folder of the bundled samples: $HALVARD_SAMPLES, beside the installed program, or the
// source tree's; empty when none exists.
std::filesystem::path SamplesFolder();

}  // namespace halvard::cli
