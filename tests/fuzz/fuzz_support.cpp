#include "fuzz_support.h"

#include <unistd.h>

#include <fstream>

namespace halvard::fuzz {

std::filesystem::path ScratchFolder() {
  static const std::filesystem::path folder = [] {
    auto f =
        std::filesystem::temp_directory_path() / ("halvard-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(f);
    return f;
  }();
  return folder;
}

std::filesystem::path ScratchFile(std::string_view name, std::string_view text) {
  const std::filesystem::path file = ScratchFolder() / name;
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  return file;
}

}  // namespace halvard::fuzz
