#include "halvard/settings/folders.h"

#include <system_error>

#include "halvard/error.h"

namespace halvard::settings {
namespace fs = std::filesystem;

namespace {

struct Folder {
  const std::string& path;
  std::string defaultPath;
  const char* what;        // "stock files folder"
  const char* valueName;   // "Stock File Path"
  const char* option;      // "--stock-dir"
  const char* sampleName;  // "data"
};

std::string Help(const Folder& f, const fs::path& samplesDir) {
  std::string help = "the " + std::string(f.what) + " \"" + f.path +
                     "\" does not exist. Create it, or choose another with " + f.option +
                     " DIR or 'halvard config set Paths \"" + f.valueName + "\" DIR'.";
  if (!samplesDir.empty() && fs::is_directory(samplesDir / f.sampleName)) {
    help += " The bundled samples are in " + (samplesDir / "data").string() + " (prices) and " +
            (samplesDir / "watchlists").string() + " (watch lists).";
  }
  return help;
}

// Creates a default folder; returns how many sample files went into it.
int CreateWithSamples(const Folder& f, const fs::path& samplesDir) {
  std::error_code ec;
  fs::create_directories(f.path, ec);
  if (ec)
    throw Error("cannot create the " + std::string(f.what) + " " + f.path + ": " + ec.message());
  int copied = 0;
  const fs::path samples = samplesDir / f.sampleName;
  if (samplesDir.empty() || !fs::is_directory(samples)) return 0;
  for (const auto& entry : fs::directory_iterator(samples)) {
    if (!entry.is_regular_file()) continue;
    fs::copy_file(entry.path(), fs::path(f.path) / entry.path().filename(),
                  fs::copy_options::skip_existing, ec);
    if (ec)
      throw Error("cannot copy " + entry.path().string() + " into " + f.path + ": " + ec.message());
    ++copied;
  }
  return copied;
}

}  // namespace

std::string PrepareFolders(const Config& config, const fs::path& samplesDir) {
  const Folder folders[] = {
      {config.StockFilePath, DefaultStockFilePath(), "stock files folder", "Stock File Path",
       "--stock-dir", "data"},
      {config.IncFilePath, DefaultIncFilePath(), "watch-list folder", "Inc File Path", "--list-dir",
       "watchlists"},
  };
  std::string notice;
  for (const Folder& f : folders) {
    std::error_code ec;
    if (!f.path.empty() && fs::is_directory(f.path, ec)) continue;
    if (f.path != f.defaultPath) throw Error(Help(f, samplesDir));
    const int copied = CreateWithSamples(f, samplesDir);
    notice += "created the " + std::string(f.what) + " " + f.path;
    notice += copied > 0 ? " with " + std::to_string(copied) + " sample files\n" : "\n";
  }
  return notice;
}

}  // namespace halvard::settings
