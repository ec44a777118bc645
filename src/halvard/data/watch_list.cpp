#include "halvard/data/watch_list.h"

#include <algorithm>
#include <system_error>

#include "halvard/data/symbol_name.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/text.h"

namespace halvard::data {
using platform::LineReader;
namespace fs = std::filesystem;

namespace {

bool EndsWithInc(std::string_view name) {
  return name.size() > 4 && platform::EndsWithIgnoreCase(name, ".inc");
}

}  // namespace

std::vector<std::string> ReadWatchList(const fs::path& path, Quotes quotes, Names names) {
  const std::optional<std::string> text = platform::ReadFileIfExists(path);
  if (!text) throw Error("watch list " + path.string() + " does not exist");
  return ParseWatchList(*text, path, quotes, names);
}

std::vector<std::string> ParseWatchList(std::string_view text, const fs::path& path, Quotes quotes,
                                        Names names) {
  std::vector<std::string> symbols;
  LineReader reader(text);
  std::string_view line;
  std::string unquoted;
  while (reader.Next(line)) {
    if (quotes == Quotes::kStrip) {
      unquoted.assign(line);
      std::erase(unquoted, '"');
      line = unquoted;
    }
    line = platform::Trim(line, " ");  // spaces only: a tab stays part of the line
    if (line.empty()) continue;
    if (names == Names::kSymbols) {
      if (const std::string problem = SymbolProblem(line); !problem.empty()) {
        throw Error("watch list " + path.string() + " line " + std::to_string(reader.number()) +
                    ": " + platform::QuoteForMessage(line) + " is not a symbol: " + problem);
      }
    }
    symbols.emplace_back(line);
  }
  return symbols;
}

std::string WatchListText(const std::vector<std::string>& symbols) {
  std::string text;
  for (const std::string& s : symbols) {
    text += s;
    text += "\r\n";
  }
  return text;
}

void WriteWatchList(const fs::path& path, std::string_view listText) {
  std::string content(listText);
  content += "\r\n";
  platform::WriteFileAtomically(path, content);
}

std::vector<std::string> ListWatchLists(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (EndsWithInc(name) && !it->is_directory(ec)) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

fs::path WatchListPath(const fs::path& folder, const std::string& name) {
  const std::string file = EndsWithInc(name) ? name : name + ".inc";
  // A name with a folder in it is a path of its own, not a list of the watch-list folder.
  if (name.find('/') != std::string::npos) return file;
  return folder / file;
}

}  // namespace halvard::data
