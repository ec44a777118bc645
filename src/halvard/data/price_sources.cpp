#include "halvard/data/price_sources.h"

#include "halvard/data/crumb_session.h"
#include "halvard/error.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/paced_http_client.h"

namespace halvard::data {
namespace {

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
                                                        const platform::RequestHooks& hooks,
                                                        bool keepCookies) {
  platform::HttpOptions options;
  options.keepCookies = keepCookies;
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

namespace {

std::unique_ptr<PriceSource> MakeOneSource(const settings::ServiceSettings& s,
                                           const std::string& provider,
                                           const platform::RequestHooks& hooks) {
  const auto Client = [&](const char* userAgent, bool pace, bool keepCookies = false) {
    return MakeServiceClient(s, userAgent, pace, hooks, keepCookies);
  };
  if (provider == "table") {
    return std::make_unique<TableSource>(s.tableHost, Client(kOwnAgent, false));
  }
  if (provider == "chart") {
    return MakeChartSource(s.chartHost, Client(kBrowserAgent, true, true), s.cookieHost);
  }
  if (provider == "stooq") {
    return MakeStooqSource(s.stooqHost, Client(kOwnAgent, true), s.stooqKey);
  }
  if (provider == "tiingo") {
    if (s.tiingoToken.empty()) {
      throw Error(
          "the tiingo service needs a key: set [Services] Tiingo Token (a free account "
          "gives one)");
    }
    return MakeTiingoSource(s.tiingoHost, s.tiingoToken, Client(kOwnAgent, true));
  }
  throw Error("no price service named " + platform::QuoteForMessage(provider) +
              " (table, chart, stooq or tiingo)");
}

}  // namespace

std::unique_ptr<PriceSource> MakePriceSource(const settings::ServiceSettings& s,
                                             const platform::RequestHooks& hooks) {
  const std::vector<std::string> chain = settings::ProviderChain(s);
  if (chain.size() == 1) return MakeOneSource(s, chain.front(), hooks);
  std::vector<NamedSource> sources;
  for (const std::string& provider : chain) {
    sources.push_back({provider, MakeOneSource(s, provider, hooks)});
  }
  return MakeChainSource(std::move(sources));
}

}  // namespace halvard::data
