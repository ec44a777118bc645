#pragma once
// Where the program keeps its files on this machine, following the XDG base directories.

#include <filesystem>

namespace halvard::platform {

// $HALVARD_CONFIG, else $XDG_CONFIG_HOME/halvard600/settings.ini (~/.config/...).
std::filesystem::path DefaultSettingsFile();
// $XDG_DATA_HOME/halvard600 (~/.local/share/halvard600): the default price and list folders.
std::filesystem::path DataHome();
// $HALVARD_LOG, else $XDG_STATE_HOME/halvard600/debug.log (~/.local/state/...).
std::filesystem::path DefaultEventLogFile();

}  // namespace halvard::platform
