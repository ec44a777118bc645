#pragma once
// HttpClient: one blocking GET that returns the whole answer. Downloads go through this
// interface so tests can point them at a server of their own. A failure to get any answer
// (no connection, refused, timed out, a bad address) is reported in the result, never thrown:
// one symbol's network trouble must not end a list.

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace halvard::platform {

struct HttpResponse {
  std::string failure;     // why no answer arrived; empty when one did
  bool transient = false;  // the failure was a time-out or a dropped connection: worth a retry
  bool cancelled = false;  // the request was stopped because the user asked
  long status = 0;         // the HTTP status of the answer (after redirects)
  // The Retry-After header in seconds from now (either form of the header), when sent.
  std::optional<long> retryAfterSeconds;
  std::string body;

  bool answered() const { return failure.empty(); }
};

// "HTTP status 503 (Service Unavailable)": the code with its usual reason, for messages.
std::string StatusText(long status);

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  virtual HttpResponse Get(const std::string& url) = 0;
};

struct HttpOptions {
  std::chrono::milliseconds timeout{60000};  // the whole request, connection included
  std::string userAgent = "halvard600";
  // A larger answer is refused without holding more of it than this (after decompression).
  size_t maxBodyBytes = size_t{32} << 20;
  // Asked at least once a second while a request runs; true stops it (Ctrl-C, Cancel).
  std::function<bool()> cancelled = {};
  // Keep the cookies the answers set and send them back with the later requests of this client,
  // as a browser would (a service that hands out a session cookie needs it).
  bool keepCookies = false;
};

// Over libcurl: http and https only, for the first request and every redirect; at most ten
// redirects followed; TLS certificates verified.
class CurlHttpClient : public HttpClient {
 public:
  explicit CurlHttpClient(HttpOptions options = {});
  ~CurlHttpClient() override;
  CurlHttpClient(const CurlHttpClient&) = delete;
  CurlHttpClient& operator=(const CurlHttpClient&) = delete;
  HttpResponse Get(const std::string& url) override;

 private:
  struct Cookies;  // the cookie store shared by this client's transfers

  HttpOptions options_;
  std::unique_ptr<Cookies> cookies_;
};

}  // namespace halvard::platform
