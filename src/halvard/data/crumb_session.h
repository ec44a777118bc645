#pragma once
// CrumbSession: the handshake the chart service asks of its clients today. An answer of 401 that
// says "Invalid Crumb" or "Unauthorized" means the service wants a session: a cookie (from the
// cookie host's page) and the crumb that goes with it (GET /v1/test/getcrumb on the chart host
// with that cookie). The request is then made again with "crumb=" added; the crumb is kept for
// the rest of the run, so the handshake is made once, and again only when the service turns the
// crumb away. The client must keep cookies (HttpOptions::keepCookies).

#include <memory>
#include <string>

#include "halvard/platform/http_client.h"

namespace halvard::data {

// The chart service turns away clients that do not look like a browser.
inline constexpr const char* kBrowserAgent =
    "Mozilla/5.0 (X11; Linux x86_64) AppleWebKit/537.36 (KHTML, like Gecko) "
    "Chrome/124.0 Safari/537.36";

class CrumbSession {
 public:
  // Both hosts are base URLs as the settings give them ("http://" assumed without a scheme).
  CrumbSession(std::string chartHost, std::string cookieHost,
               std::unique_ptr<platform::HttpClient> http);

  // The chart host's base URL.
  const std::string& base() const { return chartBase_; }

  // GET of the address (the chart host's base URL, a path and a query), with the crumb once one
  // is known. When the handshake itself fails, the answer that asked for it comes back, with
  // failure saying why no crumb was had.
  platform::HttpResponse Get(const std::string& url);

  // Whether an answer asks for the handshake.
  static bool AsksForCrumb(const platform::HttpResponse& response);

 private:
  std::string WithCrumb(const std::string& url) const;
  // The crumb of a fresh session, or why there is none.
  std::string Handshake(std::string& crumb);

  std::string chartBase_;
  std::string cookieBase_;
  std::unique_ptr<platform::HttpClient> http_;
  std::string crumb_;
};

}  // namespace halvard::data
