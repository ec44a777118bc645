#include "halvard/data/price_check.h"

#include <algorithm>

#include "halvard/data/price_folder.h"
#include "halvard/data/stored_price_text.h"
#include "halvard/data/watch_list.h"
#include "halvard/platform/files.h"
#include "halvard/platform/folder_names.h"
#include "halvard/platform/ordered_work.h"
#include "halvard/platform/text.h"

namespace halvard::data {
namespace fs = std::filesystem;

namespace {

// What checking one file found, and the repair to write when one is asked for and its stored
// form loads: all of it read, nothing written yet.
struct Examined {
  CheckedFile checked;
  fs::path repairPath;
  std::string repairText;
  std::string repairNote;  // empty: nothing to write
};

Examined Examine(const fs::path& folder, const platform::FolderNames& names,
                 const std::string& name, bool fix) {
  Examined e;
  e.checked.name = name;
  const fs::path path = folder / name;
  const std::optional<std::string> text = names.ReadFileIfExists(path);
  if (!text) {
    e.checked.missing = true;
    return e;
  }
  const FileKind kind = KindOfFileName(name);
  e.checked.problem = LoadProblem(*text, name, kind);
  if (!fix || !e.checked.problem) return e;
  StoredPriceText stored = ToStoredForm(*text, KeepLines::kNonEmpty, kind);
  if (stored.text == *text || LoadProblem(stored.text, name, kind)) return e;
  e.repairPath = platform::ResolvePath(path).value_or(path);
  e.repairNote = stored.trimmed() ? KeptDaysText(stored)
                                  : "rewrote the line ends (one CR LF a line, no empty line)";
  e.repairText = std::move(stored.text);
  return e;
}

// Writes the repair, if any: files are rewritten one after the other in the order they are
// checked, so a failure stops the check where it happens.
CheckedFile Finish(Examined& e) {
  if (!e.repairNote.empty()) {
    platform::WriteFileAtomically(e.repairPath, e.repairText);
    e.checked.fixed = e.repairNote;
    e.checked.problem.reset();
  }
  return std::move(e.checked);
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
                                         platform::Progress& progress, int jobs) {
  std::vector<CheckedFile> checked;
  const int total = static_cast<int>(fileNames.size());
  const platform::FolderNames names(stockFolder);
  const auto step = [&](int i) {
    if (progress.Cancelled()) return false;
    progress.Step(i, total, fileNames[static_cast<size_t>(i)]);
    return true;
  };
  const auto examine = [&](int i) {
    return Examine(stockFolder, names, fileNames[static_cast<size_t>(i)], fix);
  };
  if (jobs <= 1 || total <= 1) {
    for (int i = 0; i < total && step(i); ++i) {
      Examined e = examine(i);
      checked.push_back(Finish(e));
    }
    return checked;
  }
  // The files are read and parsed side by side; the progress, the repairs and the findings
  // follow the files' order.
  platform::TakeInOrder<Examined>(
      total, jobs, [] { return std::make_unique<int>(0); },
      [&](int&, int i, Examined& e) { e = examine(i); },
      [&](int i, Examined* e) {
        if (!step(i)) return false;
        if (e == nullptr) {
          Examined again = examine(i);
          checked.push_back(Finish(again));
        } else {
          checked.push_back(Finish(*e));
        }
        return true;
      });
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
