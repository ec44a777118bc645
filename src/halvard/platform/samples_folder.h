#pragma once
// Where the bundled samples (a "data" folder of price files and a "watchlists" folder) are
// found, for a first run on a fresh machine. Header only: each front end passes the folders its
// build knows of (the installed share folder, the source tree).

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <system_error>
#include <vector>

namespace halvard::platform {

// $HALVARD_SAMPLES, then share/halvard600/samples beside the running program's folder, then the
// given folders, in that order; the first that holds a "data" folder. Empty when none does.
inline std::filesystem::path FindSamplesFolder(
    std::initializer_list<std::filesystem::path> builtIn) {
  namespace fs = std::filesystem;
  std::vector<fs::path> candidates;
  if (const char* env = std::getenv("HALVARD_SAMPLES"); env != nullptr && *env != '\0') {
    candidates.emplace_back(env);
  }
  std::error_code ec;
  if (const fs::path self = fs::read_symlink("/proc/self/exe", ec); !ec) {
    candidates.push_back(self.parent_path().parent_path() / "share/halvard600/samples");
  }
  candidates.insert(candidates.end(), builtIn);
  for (const fs::path& c : candidates) {
    if (fs::is_directory(c / "data", ec)) return c;
  }
  return {};
}

}  // namespace halvard::platform
