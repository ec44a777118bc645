#include "halvard/runs/start_session.h"

#include <exception>

#include "halvard/data/file_parser.h"
#include "halvard/platform/app_paths.h"
#include "halvard/settings/folders.h"

namespace halvard::runs {

settings::MRegistry SettingsStoreAt(const std::filesystem::path& file) {
  return settings::MRegistry(file.empty() ? platform::DefaultSettingsFile() : file);
}

StartReport StartSession(Session& s, const StartRequest& request) {
  StartReport report;
  const auto problem = [&](const std::exception& e) {
    report.notes.push_back({StartNote::Kind::kProblem, e.what()});
  };
  const auto step = [&](auto&& run) {
    if (!request.carryOn) return run();
    try {
      run();
    } catch (const std::exception& e) {
      problem(e);
    }
  };
  step([&] { s.ReadSettings(); });
  // Folders given for this run are not stored: the settings file keeps the user's own.
  if (!request.stockDir.empty()) {
    settings::SetForThisRun(s.config, "Paths", "Stock File Path", request.stockDir);
  }
  if (!request.listDir.empty()) {
    settings::SetForThisRun(s.config, "Paths", "Inc File Path", request.listDir);
  }
  if (request.prepareFolders) {
    step([&] {
      const std::string notice = settings::PrepareFolders(s.config, request.samples);
      if (!notice.empty()) report.notes.push_back({StartNote::Kind::kSamplesCopied, notice});
    });
  }
  if (request.openStores) {
    step([&] { s.epsStore(); });
    step([&] { s.stockDb(Session::Access::kRead); });
  }
  if (request.startUp) {
    step([&] {
      try {
        report.indexLoaded = s.StartUp();
      } catch (const data::PriceFileError& e) {
        if (!request.indexMayFail) throw;
        return problem(e);
      }
      report.indexMissing = !report.indexLoaded;
    });
  }
  return report;
}

}  // namespace halvard::runs
