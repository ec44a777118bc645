#include "halvard/platform/paced_http_client.h"

#include <algorithm>
#include <thread>

namespace halvard::platform {
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

PacedHttpClient::PacedHttpClient(std::unique_ptr<HttpClient> inner, milliseconds pause,
                                 bool retryOnRateLimit, Sleep sleep)
    : inner_(std::move(inner)),
      pause_(pause),
      retryOnRateLimit_(retryOnRateLimit),
      sleep_(sleep ? std::move(sleep) : [](milliseconds d) { std::this_thread::sleep_for(d); }) {}

seconds PacedHttpClient::RetryWait(const HttpResponse& rateLimited) {
  const long asked = rateLimited.retryAfterSeconds.value_or(5);
  return seconds(std::clamp(asked, 0L, 30L));
}

HttpResponse PacedHttpClient::Get(const std::string& url) {
  HttpResponse response = GetInTurn(url);
  if (retryOnRateLimit_ && response.answered() && response.status == 429) {
    sleep_(RetryWait(response));
    response = GetInTurn(url);
  }
  return response;
}

HttpResponse PacedHttpClient::GetInTurn(const std::string& url) {
  if (lastRequest_) {
    const auto since =
        std::chrono::duration_cast<milliseconds>(steady_clock::now() - *lastRequest_);
    if (since < pause_) sleep_(pause_ - since);
  }
  HttpResponse response = inner_->Get(url);
  lastRequest_ = steady_clock::now();
  return response;
}

}  // namespace halvard::platform
