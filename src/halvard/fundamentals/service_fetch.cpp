#include "halvard/fundamentals/service_fetch.h"

#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"

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
  return data::MakeServiceClient(services, "halvard600", true, {});
}

}  // namespace halvard::fundamentals
