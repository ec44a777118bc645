#pragma once
// The check of the price files a user keeps: each read as the loader reads it, so a file that
// would stop a scan is found before the scan. A repair rewrites a file in the one stored form
// (newest days kept, one CR LF a line) and only when that form loads.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "halvard/data/file_parser.h"
#include "halvard/platform/progress.h"

namespace halvard::data {

struct CheckedFile {
  std::string name;                       // "ORCL.txt", as it was looked for
  bool missing = false;                   // a list's symbol without a price file
  std::optional<PriceFileError> problem;  // what the loader says of it now; nothing: it loads
  std::string fixed;                      // what a repair did; empty when nothing was rewritten
};

// Every price file of the folder (the index file among them), in folder order.
std::vector<std::string> FolderFilesToCheck(const std::filesystem::path& stockFolder);

// The price files of the lists' symbols (each once, in list order), then the index file. A
// missing list, or a line of one that is not a symbol, is a halvard::Error.
std::vector<std::string> ListFilesToCheck(const std::filesystem::path& listFolder,
                                          const std::vector<std::string>& listNames);

// Checks each file of the folder, one progress step a file; a cancel stops between two files.
// With fix, a file that does not load is rewritten (atomically) in the stored form when that
// loads, and left byte for byte as it was when it does not. With more than one job the files
// are read and parsed on that many threads; the steps, repairs and findings keep the files'
// order, as with one.
std::vector<CheckedFile> CheckPriceFiles(const std::filesystem::path& stockFolder,
                                         const std::vector<std::string>& fileNames, bool fix,
                                         platform::Progress& progress, int jobs = 1);

// One line a problem ("ORCL.txt:1003: more than 1001 day lines; ..."), a repair ("ORCL.txt:
// fixed: kept the newest 1001 of 4,028 days") or a missing file, then the summary ("41 files
// checked: 1 does not load"). Lines end with CR LF.
std::string CheckReportText(const std::vector<CheckedFile>& files);

// True when every file that exists loads.
bool AllLoad(const std::vector<CheckedFile>& files);

}  // namespace halvard::data
