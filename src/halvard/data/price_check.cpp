#include "halvard/data/price_check.h"

#include <algorithm>

#include "halvard/data/price_folder.h"
#include "halvard/data/stored_price_text.h"
#include "halvard/data/watch_list.h"
#include "halvard/platform/files.h"

namespace halvard::data {
namespace fs = std::filesystem;

namespace {

// What repairing the text did, or empty when its stored form would not load either.
std::string Repair(const fs::path& path, const std::string& name, const std::string& text,
                   FileKind kind) {
  const StoredPriceText stored = ToStoredForm(text, KeepLines::kNonEmpty, kind);
  if (stored.text == text || LoadProblem(stored.text, name, kind)) return "";
  platform::WriteFileAtomically(path, stored.text);
  if (stored.trimmed()) return KeptDaysText(stored);
  return "rewrote the line ends (one CR LF a line, no empty line)";
}

CheckedFile Check(const fs::path& folder, const std::string& name, bool fix) {
  CheckedFile checked;
  checked.name = name;
  const fs::path path = folder / name;
  const std::optional<std::string> text = platform::ReadFileIfExists(path);
  if (!text) {
    checked.missing = true;
    return checked;
  }
  const FileKind kind = KindOfFileName(name);
  checked.problem = LoadProblem(*text, name, kind);
  if (fix && checked.problem) {
    checked.fixed = Repair(platform::ResolvePath(path).value_or(path), name, *text, kind);
    if (!checked.fixed.empty()) checked.problem.reset();
  }
  return checked;
}

std::string Count(size_t n, const char* one, const char* many) {
  return std::to_string(n) + " " + (n == 1 ? one : many);
}

}  // namespace

std::vector<std::string> FolderFilesToCheck(const fs::path& stockFolder) {
  return ListPriceFiles(stockFolder);
}

std::vector<std::string> ListFilesToCheck(const fs::path& listFolder,
                                          const std::vector<std::string>& listNames) {
  std::vector<std::string> names;
  for (const std::string& list : listNames) {
    for (const std::string& symbol :
         ReadWatchList(WatchListPath(listFolder, list), Quotes::kStrip, Names::kSymbols)) {
      const std::string name = symbol + ".txt";
      const bool seen = std::any_of(names.begin(), names.end(), [&](const std::string& n) {
        return platform::EqualsIgnoreCase(n, name);
      });
      if (!seen) names.push_back(name);
    }
  }
  names.emplace_back(kIndexFileName);
  return names;
}

std::vector<CheckedFile> CheckPriceFiles(const fs::path& stockFolder,
                                         const std::vector<std::string>& fileNames, bool fix,
                                         platform::Progress& progress) {
  std::vector<CheckedFile> checked;
  const int total = static_cast<int>(fileNames.size());
  for (int i = 0; i < total && !progress.Cancelled(); ++i) {
    progress.Step(i, total, fileNames[i]);
    checked.push_back(Check(stockFolder, fileNames[i], fix));
  }
  return checked;
}

std::string CheckReportText(const std::vector<CheckedFile>& files) {
  std::string text;
  size_t failing = 0, fixed = 0, missing = 0;
  for (const CheckedFile& f : files) {
    if (f.missing) {
      ++missing;
      text += f.name + ": no such file\r\n";
    } else if (f.problem) {
      ++failing;
      const size_t line = f.problem->line();
      text.append(f.name);
      if (line != 0) text.append(":").append(std::to_string(line));
      text.append(": ").append(f.problem->problem()).append("\r\n");
    } else if (!f.fixed.empty()) {
      ++fixed;
      text += f.name + ": fixed: " + f.fixed + "\r\n";
    }
  }
  std::string summary = Count(files.size() - missing, "file", "files") + " checked: ";
  summary += failing == 0 ? "all load" : Count(failing, "does not load", "do not load");
  if (fixed > 0) summary += ", " + Count(fixed, "fixed", "fixed");
  if (missing > 0) summary += ", " + Count(missing, "missing", "missing");
  return text + summary + "\r\n";
}

bool AllLoad(const std::vector<CheckedFile>& files) {
  return std::none_of(files.begin(), files.end(),
                      [](const CheckedFile& f) { return f.problem.has_value(); });
}

}  // namespace halvard::data
