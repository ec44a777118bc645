#include "halvard/data/price_folder.h"

#include <algorithm>
#include <cctype>

#include "halvard/platform/text.h"

namespace halvard::data {
namespace fs = std::filesystem;

std::vector<std::string> ListPriceFiles(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    const bool isTxt = name.size() > 4 && platform::EndsWithIgnoreCase(name, ".txt");
    if (isTxt && !it->is_directory(ec)) names.push_back(std::move(name));
  }
  const auto capitals = [](unsigned char c) { return std::toupper(c); };
  std::sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [&](char x, char y) { return capitals(x) < capitals(y); });
  });
  return names;
}

std::string SymbolOfFileName(const std::string& fileName) {
  return fileName.substr(0, fileName.find('.'));
}

}  // namespace halvard::data
