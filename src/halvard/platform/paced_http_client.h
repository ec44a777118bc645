#pragma once
// PacedHttpClient: the manners free services ask of their clients. It waits a pause between two
// requests and, when an answer is "429 Too Many Requests", waits what the service asks
// (Retry-After, at most 30 s) and tries once more.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "halvard/platform/http_client.h"

namespace halvard::platform {

class PacedHttpClient : public HttpClient {
 public:
  using Sleep = std::function<void(std::chrono::milliseconds)>;

  PacedHttpClient(std::unique_ptr<HttpClient> inner, std::chrono::milliseconds pause,
                  bool retryOnRateLimit, Sleep sleep = {});
  HttpResponse Get(const std::string& url) override;

  // The wait before the one retry: Retry-After, bounded to 0..30 s; 5 s when it was not sent.
  static std::chrono::seconds RetryWait(const HttpResponse& rateLimited);

 private:
  HttpResponse GetInTurn(const std::string& url);

  std::unique_ptr<HttpClient> inner_;
  std::chrono::milliseconds pause_;
  bool retryOnRateLimit_;
  Sleep sleep_;
  std::optional<std::chrono::steady_clock::time_point> lastRequest_;
};

}  // namespace halvard::platform
