#include "halvard/platform/app_paths.h"

#include <cstdlib>
#include <string>

namespace halvard::platform {
namespace fs = std::filesystem;

namespace {

constexpr const char* kAppFolder = "halvard600";

std::string Env(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// An XDG base folder: the variable when set to an absolute path, else the fallback under $HOME.
fs::path XdgFolder(const char* variable, const char* fallback) {
  const fs::path set = Env(variable);
  if (set.is_absolute()) return set;
  const std::string home = Env("HOME");
  return (home.empty() ? fs::path(".") : fs::path(home)) / fallback;
}

}  // namespace

fs::path DefaultSettingsFile() {
  const std::string explicitFile = Env("HALVARD_CONFIG");
  if (!explicitFile.empty()) return explicitFile;
  return XdgFolder("XDG_CONFIG_HOME", ".config") / kAppFolder / "settings.ini";
}

fs::path DataHome() {
  return XdgFolder("XDG_DATA_HOME", ".local/share") / kAppFolder;
}

fs::path DefaultEventLogFile() {
  const std::string explicitFile = Env("HALVARD_LOG");
  if (!explicitFile.empty()) return explicitFile;
  return XdgFolder("XDG_STATE_HOME", ".local/state") / kAppFolder / "debug.log";
}

}  // namespace halvard::platform
