#include "halvard/platform/folder_names.h"

#include "halvard/platform/files.h"

namespace halvard::platform {
namespace fs = std::filesystem;
namespace {

std::string Folded(std::string name) {
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return name;
}

// "dir", "dir/" and "dir/." name the same folder.
fs::path Normal(const fs::path& folder) {
  return (folder / "").lexically_normal();
}

}  // namespace

FolderNames::FolderNames(fs::path folder) : folder_(Normal(folder.empty() ? "." : folder)) {}

std::optional<fs::path> FolderNames::Find(const std::string& name) const {
  std::call_once(listed_, [this] {
    std::error_code ec;
    for (fs::directory_iterator it(folder_, ec), end; !ec && it != end; it.increment(ec)) {
      const std::string entry = it->path().filename().string();
      byFoldedName_.try_emplace(Folded(entry), entry);  // the first in listing order wins
    }
  });
  const auto it = byFoldedName_.find(Folded(name));
  if (it == byFoldedName_.end()) return std::nullopt;
  return folder_ / it->second;
}

std::optional<std::string> FolderNames::ReadFileIfExists(const fs::path& path) const {
  const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
  if (Normal(parent) != folder_) return platform::ReadFileIfExists(path);
  if (auto text = ReadFileAsSpelled(path)) return text;
  const auto found = Find(path.filename().string());
  if (!found) return std::nullopt;
  return ReadWholeFile(path.parent_path() / found->filename());
}

}  // namespace halvard::platform
