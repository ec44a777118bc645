#include "halvard/platform/http_client.h"

#include <algorithm>
#include <ctime>
#include <memory>

#include "halvard/platform/curl_library.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::platform {
namespace {

struct CurlDeleter {
  void operator()(CURL* curl) const { Curl().easy_cleanup(curl); }
};

// Where the body goes, with the limit it may not pass.
struct BodySink {
  std::string& body;
  size_t limit;
  bool tooLarge = false;
};

size_t AppendBody(char* data, size_t size, size_t count, void* target) {
  auto& sink = *static_cast<BodySink*>(target);
  if (size * count > sink.limit - sink.body.size()) {
    sink.tooLarge = true;
    return 0;  // ends the transfer
  }
  // Growing by doubling could reserve twice the limit; the limit is the most ever held.
  const size_t needed = sink.body.size() + size * count;
  if (needed > sink.body.capacity()) {
    sink.body.reserve(std::min(sink.limit, std::max(needed, 2 * sink.body.capacity())));
  }
  sink.body.append(data, size * count);
  return size * count;
}

int CheckCancelled(void* cancelled, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  const auto& asked = *static_cast<const std::function<bool()>*>(cancelled);
  return asked && asked() ? 1 : 0;
}

std::string Megabytes(size_t bytes) {
  return FormatGeneral(static_cast<double>(bytes) / (1 << 20)) + " MB";
}

bool IsTransient(CURLcode code) {
  return code == CURLE_OPERATION_TIMEDOUT || code == CURLE_RECV_ERROR || code == CURLE_SEND_ERROR ||
         code == CURLE_GOT_NOTHING || code == CURLE_PARTIAL_FILE;
}

// Keeps the Retry-After value of the last answer (a redirect's headers come first).
size_t ReadHeader(char* data, size_t size, size_t count, void* target) {
  auto& retryAfter = *static_cast<std::optional<long>*>(target);
  const std::string_view line = TrimEnd(std::string_view(data, size * count), "\r\n");
  if (line.starts_with("HTTP/")) retryAfter.reset();
  const size_t colon = line.find(':');
  if (colon != std::string_view::npos) {
    const std::string_view name = TrimSpaces(line.substr(0, colon));
    const std::string value(TrimSpaces(line.substr(colon + 1)));
    if (EqualsIgnoreCase(name, "Retry-After")) {
      if (const auto seconds = ParseWholeNumber(value)) {
        retryAfter = static_cast<long>(*seconds);
      } else if (const std::time_t when = Curl().getdate(value.c_str(), nullptr); when >= 0) {
        retryAfter = static_cast<long>(when - std::time(nullptr));
      }
    }
  }
  return size * count;
}

}  // namespace

std::string StatusText(long status) {
  static const std::pair<long, const char*> kReasons[] = {
      {200, "OK"},
      {301, "Moved Permanently"},
      {302, "Found"},
      {400, "Bad Request"},
      {401, "Unauthorized"},
      {403, "Forbidden"},
      {404, "Not Found"},
      {408, "Request Timeout"},
      {410, "Gone"},
      {429, "Too Many Requests"},
      {500, "Internal Server Error"},
      {502, "Bad Gateway"},
      {503, "Service Unavailable"},
      {504, "Gateway Timeout"},
  };
  std::string text = "HTTP status " + std::to_string(status);
  for (const auto& [code, reason] : kReasons) {
    if (code == status) return text + " (" + reason + ")";
  }
  return text;
}

struct CurlHttpClient::Cookies {
  Cookies() : share(Curl().share_init()) {
    if (share != nullptr) Curl().share_setopt(share, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
  }
  ~Cookies() {
    if (share != nullptr) Curl().share_cleanup(share);
  }
  Cookies(const Cookies&) = delete;
  Cookies& operator=(const Cookies&) = delete;
  CURLSH* share;
};

CurlHttpClient::CurlHttpClient(HttpOptions options) : options_(std::move(options)) {
  Curl();  // a missing libcurl is said here, where a command first needs the network
  if (options_.keepCookies) cookies_ = std::make_unique<Cookies>();
}

CurlHttpClient::~CurlHttpClient() = default;

HttpResponse CurlHttpClient::Get(const std::string& url) {
  HttpResponse response;
  const CurlLibrary& api = Curl();
  const std::unique_ptr<CURL, CurlDeleter> curl(api.easy_init());
  if (!curl) {
    response.failure = "could not start a transfer";
    return response;
  }
  char error[CURL_ERROR_SIZE] = "";
  CURL* c = curl.get();
  api.easy_setopt(c, CURLOPT_URL, url.c_str());
  // Nothing but the web: a redirect to file:// or another scheme must not read local files.
  api.easy_setopt(c, CURLOPT_PROTOCOLS_STR, "http,https");
  api.easy_setopt(c, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  api.easy_setopt(c, CURLOPT_FOLLOWLOCATION, 1L);
  api.easy_setopt(c, CURLOPT_MAXREDIRS, 10L);
  api.easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 1L);
  api.easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 2L);
  api.easy_setopt(c, CURLOPT_TIMEOUT_MS, static_cast<long>(options_.timeout.count()));
  api.easy_setopt(c, CURLOPT_NOSIGNAL, 1L);         // time-outs without SIGALRM, safe in threads
  api.easy_setopt(c, CURLOPT_ACCEPT_ENCODING, "");  // whatever compression curl can undo
  api.easy_setopt(c, CURLOPT_USERAGENT, options_.userAgent.c_str());
  api.easy_setopt(c, CURLOPT_ERRORBUFFER, error);
  if (cookies_ && cookies_->share != nullptr) {
    api.easy_setopt(c, CURLOPT_COOKIEFILE, "");  // the cookie engine on, no file read
    api.easy_setopt(c, CURLOPT_SHARE, cookies_->share);
  }
  BodySink sink{response.body, options_.maxBodyBytes};
  api.easy_setopt(c, CURLOPT_WRITEFUNCTION, AppendBody);
  api.easy_setopt(c, CURLOPT_WRITEDATA, &sink);
  // A declared length over the limit is refused before any of the body comes.
  api.easy_setopt(c, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(options_.maxBodyBytes));
  api.easy_setopt(c, CURLOPT_NOPROGRESS, 0L);
  api.easy_setopt(c, CURLOPT_XFERINFOFUNCTION, CheckCancelled);
  api.easy_setopt(c, CURLOPT_XFERINFODATA, &options_.cancelled);
  api.easy_setopt(c, CURLOPT_HEADERFUNCTION, ReadHeader);
  api.easy_setopt(c, CURLOPT_HEADERDATA, &response.retryAfterSeconds);
  const CURLcode code = api.easy_perform(c);
  if (code != CURLE_OK) {
    if (sink.tooLarge || code == CURLE_FILESIZE_EXCEEDED) {
      response.failure =
          "the answer is larger than the limit of " + Megabytes(options_.maxBodyBytes);
    } else if (code == CURLE_ABORTED_BY_CALLBACK) {
      response.failure = "stopped";
      response.cancelled = true;
    } else {
      response.failure = error[0] != '\0' ? error : api.easy_strerror(code);
      response.transient = IsTransient(code);
    }
    response.body.clear();
    response.retryAfterSeconds.reset();
    return response;
  }
  api.easy_getinfo(c, CURLINFO_RESPONSE_CODE, &response.status);
  return response;
}

}  // namespace halvard::platform
