#pragma once
// A screen run by a screener service (the query and answer of screen_query.h): page after page
// until a page brings no symbol not seen before, or the page cap is reached, so a service that
// repeats itself or never ends cannot keep the run going for ever.

#include <string>

#include "halvard/platform/http_client.h"
#include "halvard/platform/progress.h"
#include "halvard/screener/criteria.h"
#include "halvard/screener/screen_result.h"

namespace halvard::screener {

inline constexpr int kMaxScreenPages = 200;

// Every request goes through http to the host's base address. Each page is a progress step; a
// cancel stops between two pages. A page that brings no answer, an HTTP error or a body not in
// the answer's form is a halvard::Error naming the page and why; nothing found is kept then.
ScreenResult ScreenWithService(platform::HttpClient& http, const std::string& host,
                               const ScreenCriteria& c, platform::Progress& progress,
                               int maxPages = kMaxScreenPages);

}  // namespace halvard::screener
