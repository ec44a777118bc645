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

std::chrono::milliseconds Milliseconds(double seconds) {
  return std::chrono::milliseconds(static_cast<long long>(seconds * 1000));
}

}  // namespace

FetchResult Refused(const platform::HttpResponse& response, std::string why) {
  FetchResult result;
  result.failure = std::move(why);
  result.cancelled = response.cancelled;
  return result;
}

std::unique_ptr<platform::HttpClient> MakeServiceClient(const settings::ServiceSettings& services,
                                                        const char* userAgent, bool pace,
                                                        const platform::RequestHooks& hooks) {
  platform::HttpOptions options;
  options.timeout = Milliseconds(services.timeoutSeconds);
  options.userAgent = userAgent;
  options.maxBodyBytes = static_cast<size_t>(services.answerLimitMegabytes) << 20;
  options.cancelled = hooks.cancelled;
  const platform::RetryPolicy retry{services.retries, Milliseconds(services.retryWaitSeconds),
                                    Milliseconds(services.retryWaitLimitSeconds),
                                    Milliseconds(services.retryTotalWaitSeconds)};
  return std::make_unique<platform::PacedHttpClient>(
      std::make_unique<platform::CurlHttpClient>(options),
      std::chrono::milliseconds(pace ? services.pauseMilliseconds : 0), retry, hooks);
}

std::unique_ptr<PriceSource> MakePriceSource(const settings::ServiceSettings& s,
                                             const platform::RequestHooks& hooks) {
  const auto Client = [&](const char* userAgent, bool pace) {
    return MakeServiceClient(s, userAgent, pace, hooks);
  };
  if (s.provider == "table") {
    return std::make_unique<TableSource>(s.tableHost, Client(kOwnAgent, false));
  }
  if (s.provider == "chart") {
    return MakeChartSource(s.chartHost, Client(kBrowserAgent, true));
  }
  if (s.provider == "stooq") {
    return MakeStooqSource(s.stooqHost, Client(kOwnAgent, true));
  }
  if (s.provider == "tiingo") {
    if (s.tiingoToken.empty()) {
      throw Error(
          "the tiingo service needs a key: set [Services] Tiingo Token (a free account "
          "gives one)");
    }
    return MakeTiingoSource(s.tiingoHost, s.tiingoToken, Client(kOwnAgent, true));
  }
  throw Error("no price service named \"" + s.provider + "\" (table, chart, stooq or tiingo)");
}

}  // namespace halvard::data
