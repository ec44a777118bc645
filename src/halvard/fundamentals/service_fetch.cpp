#include "halvard/fundamentals/service_fetch.h"

#include "halvard/data/price_answer.h"
#include "halvard/platform/paced_http_client.h"

namespace halvard::fundamentals {

std::optional<std::string> FetchServiceBody(platform::HttpClient* http, const std::string& host,
                                            const std::string& pathAndQuery) {
  if (!http) return std::nullopt;
  platform::HttpResponse response = http->Get(data::BaseUrl(host) + pathAndQuery);
  if (!response.answered() || response.status < 200 || response.status > 299) return std::nullopt;
  return std::move(response.body);
}

std::unique_ptr<platform::HttpClient> MakeCompanyDataClient(
    const settings::ServiceSettings& services) {
  platform::HttpOptions options;
  options.timeout = std::chrono::milliseconds(static_cast<long>(services.timeoutSeconds * 1000));
  return std::make_unique<platform::PacedHttpClient>(
      std::make_unique<platform::CurlHttpClient>(options),
      std::chrono::milliseconds(services.pauseMilliseconds), true);
}

}  // namespace halvard::fundamentals
