#pragma once
// The screener as the screener window and `halvard screen` use it: fill a ScreenCriteria, show
// the request with ScreenQuery (screen_query.h) if wanted, run the screen with the service or
// on the local data, tell the user what the result says was not applied or skipped, and save
// the symbols as a watch list.

#include <filesystem>
#include <string>
#include <vector>

#include "halvard/platform/progress.h"
#include "halvard/runs/session.h"
#include "halvard/screener/criteria.h"
#include "halvard/screener/screen_query.h"
#include "halvard/screener/screen_result.h"
#include "halvard/settings/services.h"

namespace halvard::screener {

// The screen by the service of [Services] Screener Host, with the configured time-out and
// pause between pages. No host set, or a range whose minimum is above its maximum, is a
// halvard::UsageError; a failing page a halvard::Error (service_screen.h).
ScreenResult ScreenWithService(const settings::ServiceSettings& services, const ScreenCriteria& c,
                               platform::Progress& progress);

// The screen of the session's price files and stock database (local_screen.h). A stock
// database that cannot be opened, when a criterion needs it, is a halvard::Error.
ScreenResult ScreenLocally(runs::Session& s, const ScreenCriteria& c, platform::Progress& progress);

// Writes the symbols as the watch list NAME (NAME.inc in the watch-list folder, replaced
// atomically) and returns its path. An empty name is a halvard::UsageError.
std::filesystem::path SaveScreenList(const runs::Session& s, const std::string& name,
                                     const std::vector<std::string>& symbols);

}  // namespace halvard::screener
