#include "halvard/platform/paced_http_client.h"

#include <algorithm>
#include <random>
#include <thread>

#include "halvard/platform/number_text.h"

namespace halvard::platform {
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

HttpResponse Stopped() {
  HttpResponse response;
  response.failure = "stopped";
  response.cancelled = true;
  return response;
}

std::string Why(const HttpResponse& response) {
  return response.answered() ? StatusText(response.status) : response.failure;
}

}  // namespace

PacedHttpClient::Sleep InterruptibleSleep(std::function<bool()> cancelled) {
  return [cancelled = std::move(cancelled)](milliseconds wait) {
    const auto end = steady_clock::now() + wait;
    for (;;) {
      if (cancelled && cancelled()) return false;
      const auto now = steady_clock::now();
      if (now >= end) return true;
      std::this_thread::sleep_for(std::min<steady_clock::duration>(end - now, milliseconds(100)));
    }
  };
}

PacedHttpClient::PacedHttpClient(std::unique_ptr<HttpClient> inner, milliseconds pause,
                                 RetryPolicy retry, RequestHooks hooks, Sleep sleep, Jitter jitter)
    : inner_(std::move(inner)),
      pause_(pause),
      retry_(retry),
      hooks_(std::move(hooks)),
      sleep_(sleep ? std::move(sleep) : InterruptibleSleep(hooks_.cancelled)),
      jitter_(jitter ? std::move(jitter) : [] {
        thread_local std::mt19937 random{std::random_device{}()};
        return std::uniform_real_distribution<double>(0.5, 1.0)(random);
      }) {}

bool PacedHttpClient::Retryable(const HttpResponse& response) {
  if (response.cancelled) return false;
  if (!response.answered()) return response.transient;
  return response.status == 429 || response.status == 503;
}

milliseconds PacedHttpClient::RetryWait(const HttpResponse& response, int n,
                                        const RetryPolicy& policy, double jitter) {
  const double asked = response.retryAfterSeconds
                           ? static_cast<double>(*response.retryAfterSeconds) * 1000
                           : static_cast<double>(policy.firstWait.count()) *
                                 static_cast<double>(1LL << std::min(n - 1, 20)) * jitter;
  return milliseconds(static_cast<long long>(
      std::clamp(asked, 0.0, static_cast<double>(policy.longestWait.count()))));
}

HttpResponse PacedHttpClient::Get(const std::string& url) {
  HttpResponse response = GetInTurn(url);
  milliseconds waited{0};
  for (int n = 1; n <= retry_.retries && Retryable(response); ++n) {
    const milliseconds wait = RetryWait(response, n, retry_, jitter_());
    if (waited + wait > retry_.totalWait) break;
    if (hooks_.onRetry) {
      // The address without its query: that may hold a key.
      hooks_.onRetry("Retrying " + url.substr(0, url.find('?')) + " in " +
                     FormatGeneral(static_cast<double>(wait.count()) / 1000) + " s (" +
                     std::to_string(n) + " of " + std::to_string(retry_.retries) + ") after " +
                     Why(response));
    }
    if (!sleep_(wait)) return Stopped();
    waited += wait;
    response = GetInTurn(url);
  }
  return response;
}

HttpResponse PacedHttpClient::GetInTurn(const std::string& url) {
  if (lastRequest_) {
    const auto since =
        std::chrono::duration_cast<milliseconds>(steady_clock::now() - *lastRequest_);
    if (since < pause_ && !sleep_(pause_ - since)) return Stopped();
  }
  HttpResponse response = inner_->Get(url);
  lastRequest_ = steady_clock::now();
  return response;
}

}  // namespace halvard::platform
