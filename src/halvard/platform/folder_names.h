#pragma once
// FolderNames: the names of one folder, listed once, for the case-blind fallback of a run that
// opens many files there. A run over a list of symbols without price files would otherwise list
// the whole folder again for each one.

#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

namespace halvard::platform {

class FolderNames {
 public:
  explicit FolderNames(std::filesystem::path folder);

  // ReadFileIfExists for a file of this folder: the file under its own name, else the first
  // entry (in the folder's listing order) whose name matches without regard to ASCII case,
  // looked up in the listing taken on the first such miss. A path outside the folder takes the
  // usual lookup. Safe to call from several threads at once.
  std::optional<std::string> ReadFileIfExists(const std::filesystem::path& path) const;

  // The entry of this folder whose name matches without regard to ASCII case, if any.
  std::optional<std::filesystem::path> Find(const std::string& name) const;

 private:
  std::filesystem::path folder_;
  mutable std::once_flag listed_;
  mutable std::unordered_map<std::string, std::string> byFoldedName_;
};

}  // namespace halvard::platform
