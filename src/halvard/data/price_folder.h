#pragma once
// The price files of the stock files folder, for the commands that visit every stock.

#include <filesystem>
#include <string>
#include <vector>

namespace halvard::data {

// The names of the files ending ".txt" (any case) in the folder, in the order a case-blind file
// system lists them: by name with letters compared as capitals. A missing folder has none.
std::vector<std::string> ListPriceFiles(const std::filesystem::path& folder);

// The symbol of a price file name: the name up to its first "." (BRK.B.txt gives BRK).
std::string SymbolOfFileName(const std::string& fileName);

}  // namespace halvard::data
