#include "halvard/platform/http_client.h"

#include <curl/curl.h>

#include <ctime>
#include <memory>
#include <mutex>

#include "halvard/platform/files.h"
#include "halvard/platform/number_text.h"

namespace halvard::platform {
namespace {

struct CurlDeleter {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};

void InitCurlOnce() {
  static std::once_flag once;
  std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

size_t AppendBody(char* data, size_t size, size_t count, void* body) {
  static_cast<std::string*>(body)->append(data, size * count);
  return size * count;
}

// Keeps the Retry-After value of the last answer (a redirect's headers come first).
size_t ReadHeader(char* data, size_t size, size_t count, void* target) {
  auto& retryAfter = *static_cast<std::optional<long>*>(target);
  std::string_view line(data, size * count);
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
  if (line.starts_with("HTTP/")) retryAfter.reset();
  const size_t colon = line.find(':');
  if (colon != std::string_view::npos) {
    const std::string_view name = TrimSpaces(line.substr(0, colon));
    const std::string value(TrimSpaces(line.substr(colon + 1)));
    if (EqualsIgnoreCase(name, "Retry-After")) {
      if (const auto seconds = ParseWholeNumber(value)) {
        retryAfter = static_cast<long>(*seconds);
      } else if (const std::time_t when = curl_getdate(value.c_str(), nullptr); when >= 0) {
        retryAfter = static_cast<long>(when - std::time(nullptr));
      }
    }
  }
  return size * count;
}

}  // namespace

CurlHttpClient::CurlHttpClient(HttpOptions options) : options_(std::move(options)) {
  InitCurlOnce();
}

HttpResponse CurlHttpClient::Get(const std::string& url) {
  HttpResponse response;
  const std::unique_ptr<CURL, CurlDeleter> curl(curl_easy_init());
  if (!curl) {
    response.failure = "could not start a transfer";
    return response;
  }
  char error[CURL_ERROR_SIZE] = "";
  CURL* c = curl.get();
  curl_easy_setopt(c, CURLOPT_URL, url.c_str());
  curl_easy_setopt(c, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(c, CURLOPT_MAXREDIRS, 10L);
  curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(c, CURLOPT_TIMEOUT_MS, static_cast<long>(options_.timeout.count()));
  curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);         // time-outs without SIGALRM, safe in threads
  curl_easy_setopt(c, CURLOPT_ACCEPT_ENCODING, "");  // whatever compression curl can undo
  curl_easy_setopt(c, CURLOPT_USERAGENT, options_.userAgent.c_str());
  curl_easy_setopt(c, CURLOPT_ERRORBUFFER, error);
  curl_easy_setopt(c, CURLOPT_WRITEFUNCTION, AppendBody);
  curl_easy_setopt(c, CURLOPT_WRITEDATA, &response.body);
  curl_easy_setopt(c, CURLOPT_HEADERFUNCTION, ReadHeader);
  curl_easy_setopt(c, CURLOPT_HEADERDATA, &response.retryAfterSeconds);
  const CURLcode code = curl_easy_perform(c);
  if (code != CURLE_OK) {
    response.failure = error[0] != '\0' ? error : curl_easy_strerror(code);
    response.body.clear();
    response.retryAfterSeconds.reset();
    return response;
  }
  curl_easy_getinfo(c, CURLINFO_RESPONSE_CODE, &response.status);
  return response;
}

}  // namespace halvard::platform
