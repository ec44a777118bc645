#include "halvard/data/price_sources.h"

#include "halvard/error.h"
#include "halvard/platform/paced_http_client.h"

namespace halvard::data {
namespace {

// The chart service turns away clients that do not look like a browser.
constexpr const char* kBrowserAgent =
    "Mozilla/5.0 (X11; Linux x86_64) AppleWebKit/537.36 (KHTML, like Gecko) "
    "Chrome/124.0 Safari/537.36";
constexpr const char* kOwnAgent = "halvard600/0.1";

std::unique_ptr<platform::HttpClient> Client(const settings::ServiceSettings& services,
                                             const char* userAgent, bool pace, bool retry) {
  platform::HttpOptions options;
  options.timeout = std::chrono::milliseconds(static_cast<long>(services.timeoutSeconds * 1000));
  options.userAgent = userAgent;
  auto client = std::make_unique<platform::CurlHttpClient>(options);
  if (!pace) return client;
  return std::make_unique<platform::PacedHttpClient>(
      std::move(client), std::chrono::milliseconds(services.pauseMilliseconds), retry);
}

}  // namespace

std::unique_ptr<PriceSource> MakePriceSource(const settings::ServiceSettings& s) {
  if (s.provider == "table") {
    return std::make_unique<TableSource>(s.tableHost, Client(s, kOwnAgent, false, false));
  }
  if (s.provider == "chart") {
    return MakeChartSource(s.chartHost, Client(s, kBrowserAgent, true, true));
  }
  if (s.provider == "stooq") {
    return MakeStooqSource(s.stooqHost, Client(s, kOwnAgent, true, true));
  }
  if (s.provider == "tiingo") {
    if (s.tiingoToken.empty()) {
      throw Error(
          "the tiingo service needs a key: set [Services] Tiingo Token (a free account "
          "gives one)");
    }
    return MakeTiingoSource(s.tiingoHost, s.tiingoToken, Client(s, kOwnAgent, true, false));
  }
  throw Error("no price service named \"" + s.provider + "\" (table, chart, stooq or tiingo)");
}

}  // namespace halvard::data
