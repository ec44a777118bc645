#pragma once
// Helpers shared by the tests: a scratch folder, small files, the bundled data.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/error.h"

namespace halvard::test {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

void WriteText(const std::filesystem::path& path, std::string_view content);
std::string ReadText(const std::filesystem::path& path);

// The folders of real price data: the bundled samples (252 days of 40 symbols and ^IXIC) and
// the long histories of tests/data/prices-long (750 days, ^IXIC 4,028).
std::filesystem::path SamplePrices();
std::filesystem::path LongPrices();
std::filesystem::path TestData();

// A price file of the given day lines (newest first) under the usual header, CR LF line ends.
std::string PriceFile(const std::vector<std::string>& dayLines);

// The message of the halvard::Error that fn throws, or "no error".
template <class Fn>
std::string ErrorText(Fn&& fn) {
  try {
    fn();
  } catch (const Error& e) {
    return e.what();
  }
  return "no error";
}

}  // namespace halvard::test
