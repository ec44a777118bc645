#include "test_support.h"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace halvard::test {
namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "halvard-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ec;
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(path_, ec);
}

void WriteText(const fs::path& path, std::string_view content) {
  std::ofstream out(path, std::ios::binary);
  out << content;
}

std::string ReadText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

fs::path SamplePrices() {
  return fs::path(HALVARD_SAMPLES) / "data";
}
fs::path LongPrices() {
  return fs::path(HALVARD_TEST_DATA) / "prices-long";
}
fs::path TestData() {
  return HALVARD_TEST_DATA;
}

std::string PriceFile(const std::vector<std::string>& dayLines) {
  std::string text = "Date,Open,High,Low,Close,Volume,Adj Close\r\n";
  for (const std::string& line : dayLines) text += line + "\r\n";
  return text;
}

}  // namespace halvard::test
