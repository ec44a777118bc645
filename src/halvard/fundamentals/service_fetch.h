#pragma once
// One request to a company-data service: the host (a base URL) with the path and query as the
// services take them. The body, or nothing when no answer arrived or the answer was an HTTP
// error: such a page holds no company data, and storing it would overwrite good data.

#include <memory>
#include <optional>
#include <string>

#include "halvard/platform/http_client.h"
#include "halvard/settings/services.h"

namespace halvard::fundamentals {

std::optional<std::string> FetchServiceBody(platform::HttpClient* http, const std::string& host,
                                            const std::string& pathAndQuery);

// The client the company-data commands use: the configured time-out, and the configured pause
// between two requests, since a run asks once or twice for every stock.
std::unique_ptr<platform::HttpClient> MakeCompanyDataClient(
    const settings::ServiceSettings& services);

}  // namespace halvard::fundamentals
