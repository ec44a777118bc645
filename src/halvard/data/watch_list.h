#pragma once
// Watch lists: ".inc" files of symbols, one a line, CR LF line ends. In memory a list is the
// text of its symbols, each followed by CR LF.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace halvard::data {

enum class Quotes { kKeep, kStrip };

// Whether the lines must be symbols: a list that runs and downloads turn into file names.
enum class Names { kAny, kSymbols };

// The symbols of a list file in file order: spaces trimmed, blank lines skipped, duplicates
// kept. With Quotes::kStrip every double quote is removed first (the main window's loader does
// this so lists written with quoted symbols load too). A missing file is a halvard::Error; with
// Names::kSymbols so is a line that is no symbol name (the error names the list and the line).
std::vector<std::string> ReadWatchList(const std::filesystem::path& path,
                                       Quotes quotes = Quotes::kKeep, Names names = Names::kAny);

// The same parse of a list's text held in memory, as if read from path (which the errors name).
std::vector<std::string> ParseWatchList(std::string_view text, const std::filesystem::path& path,
                                        Quotes quotes = Quotes::kKeep, Names names = Names::kAny);

// The in-memory text of a list: each symbol followed by CR LF.
std::string WatchListText(const std::vector<std::string>& symbols);

// Replaces the file (atomically) with the list text followed by one more CR LF.
void WriteWatchList(const std::filesystem::path& path, std::string_view listText);

// The file names of the lists in a folder (names ending in ".inc", any case), sorted.
std::vector<std::string> ListWatchLists(const std::filesystem::path& folder);

// The file of a list named on the command line: folder/NAME.inc (no second ".inc" when NAME has
// it already); a NAME holding a "/" is taken as a path of its own.
std::filesystem::path WatchListPath(const std::filesystem::path& folder, const std::string& name);

}  // namespace halvard::data
