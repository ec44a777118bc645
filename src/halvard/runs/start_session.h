#pragma once
// How a session starts, for both front ends: the settings read, the folders given for this run
// put in place of the stored ones, the folders prepared (a first run fills them with the
// samples), the EPS lines and the stock database opened, and the start-up values forced before
// the index file loads. The front end shows what the report holds, each in its own way.

#include <filesystem>
#include <string>
#include <vector>

#include "halvard/runs/session.h"
#include "halvard/settings/registry.h"

namespace halvard::runs {

// The settings file given, or the default one when none is.
settings::MRegistry SettingsStoreAt(const std::filesystem::path& file);

struct StartRequest {
  std::string stockDir = {};  // the price files' folder for this run; empty: the stored one
  std::string listDir = {};   // the watch lists' folder for this run; empty: the stored one
  std::filesystem::path samples = {};  // copied into a default folder that does not exist yet
  // The steps after reading the settings, run in this order.
  bool prepareFolders = true;
  bool openStores = false;  // the EPS lines, and the stock database for reading only
  bool startUp = true;      // showRS, the RS check, RS days 10, then the index file
  // A step that fails: thrown (false), or noted in the report and the next step run (true: the
  // desktop opens whatever happens, and says what went wrong).
  bool carryOn = false;
  // Without carryOn: an index file that does not load is noted rather than thrown, so that the
  // downloads can fetch it again.
  bool indexMayFail = false;
};

struct StartNote {
  enum class Kind {
    kSamplesCopied,  // a first run made the folders and filled them: the text says so
    kProblem,        // a step failed with this text, and the start went on
  };
  Kind kind;
  std::string text;
};

struct StartReport {
  std::vector<StartNote> notes;  // in the order they came
  // Start-up ran and the index file was not loaded: RS is not available. indexMissing when there
  // is no file (showRS is then off); otherwise a problem note says why it was refused.
  bool indexLoaded = false;
  bool indexMissing = false;
};

StartReport StartSession(Session& session, const StartRequest& request);

}  // namespace halvard::runs
