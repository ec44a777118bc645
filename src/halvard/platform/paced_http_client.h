#pragma once
// PacedHttpClient: the manners services ask of their clients. It waits a pause between two
// requests and tries a request again when the service says it is busy (429, 503) or the
// connection timed out or dropped: after what Retry-After asks, or a wait that doubles with each
// try, shortened by a random part so many clients do not come back at the same moment. Every
// wait can be cut short by the user, and each retry is reported.

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "halvard/platform/http_client.h"

namespace halvard::platform {

struct RetryPolicy {
  int retries = 0;                               // further tries after the first
  std::chrono::milliseconds firstWait{2000};     // before the first retry; doubled for each next
  std::chrono::milliseconds longestWait{30000};  // one wait at most, a Retry-After included
  std::chrono::milliseconds totalWait{60000};    // all the waits of one request at most
};

// What a front end lends the requests: whether the user asked to stop, and where a retry is
// reported (the event log).
struct RequestHooks {
  std::function<bool()> cancelled;
  std::function<void(const std::string&)> onRetry;
};

class PacedHttpClient : public HttpClient {
 public:
  // Waits the time; false when the wait was cut short because the user asked to stop.
  using Sleep = std::function<bool(std::chrono::milliseconds)>;
  // A factor from 0.5 to 1 for each computed wait.
  using Jitter = std::function<double()>;

  PacedHttpClient(std::unique_ptr<HttpClient> inner, std::chrono::milliseconds pause,
                  RetryPolicy retry, RequestHooks hooks = {}, Sleep sleep = {}, Jitter jitter = {});
  HttpResponse Get(const std::string& url) override;

  // Whether an answer (or its absence) is worth another try.
  static bool Retryable(const HttpResponse& response);
  // The wait before retry n (from 1): Retry-After when sent, else firstWait × 2^(n−1) × jitter;
  // never below 0 nor above longestWait.
  static std::chrono::milliseconds RetryWait(const HttpResponse& response, int n,
                                             const RetryPolicy& policy, double jitter);

 private:
  HttpResponse GetInTurn(const std::string& url);

  std::unique_ptr<HttpClient> inner_;
  std::chrono::milliseconds pause_;
  RetryPolicy retry_;
  RequestHooks hooks_;
  Sleep sleep_;
  Jitter jitter_;
  std::optional<std::chrono::steady_clock::time_point> lastRequest_;
};

// A sleep in slices of at most a tenth of a second that ends early once cancelled() is true.
PacedHttpClient::Sleep InterruptibleSleep(std::function<bool()> cancelled);

}  // namespace halvard::platform
