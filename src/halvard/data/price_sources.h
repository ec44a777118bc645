#pragma once
// Where price histories come from. A PriceSource fetches one symbol's daily history for a
// date range and hands it over as the body the downloader stores: the header line
// "Date,Open,High,Low,Close,Volume,Adj Close", then one line per trading day, newest first,
// LF line ends. An answer that is not price data (an HTML page, a JSON error object, a rate
// limit, an HTTP error, the wrong shape) or no answer at all is a failure that says which.

#include <memory>
#include <string>
#include <vector>

#include "halvard/platform/http_client.h"
#include "halvard/platform/paced_http_client.h"
#include "halvard/settings/services.h"

namespace halvard::data {

struct FetchResult {
  std::string body;
  std::string failure;     // empty when body holds the answer
  bool cancelled = false;  // no answer because the user asked to stop
  // The service that gave the answer, when a chain chose among several.
  std::string servedBy = {};
  bool ok() const { return failure.empty(); }
};

// The failure for an answer RefusalOf refused (or for none at all).
FetchResult Refused(const platform::HttpResponse& response, std::string why);

class PriceSource {
 public:
  virtual ~PriceSource() = default;
  // startDate and endDate are day counts from 12/30/1899; both days are included.
  virtual FetchResult Fetch(const std::string& symbol, double startDate, double endDate) = 0;
};

// The historical-quotes service: GET /table.csv with keys a to g, y, ignore and s. Its CSV
// body is already in the stored form and passes through unchanged. One request per symbol, no
// pause.
class TableSource : public PriceSource {
 public:
  TableSource(std::string host, std::unique_ptr<platform::HttpClient> client);
  // The full address: the host (http:// when it names no scheme), "/table.csv?", then
  // a=M-1&b=D&c=YYYY of the start, d=M-1&e=D&f=YYYY of the end, then "&g=d&y=0&ignore=.csv&s="
  // and the symbol (percent-encoded beyond letters, digits and ".-_^": ^IXIC as it stands).
  std::string BuildRequestAddress(const std::string& symbol, double startDate,
                                  double endDate) const;
  FetchResult Fetch(const std::string& symbol, double startDate, double endDate) override;

 private:
  std::string base_;
  std::unique_ptr<platform::HttpClient> client_;
};

// The chart service of the same provider: JSON with timestamps and quote arrays, through the
// cookie-and-crumb handshake (CrumbSession) when it asks for one. The client keeps cookies.
std::unique_ptr<PriceSource> MakeChartSource(std::string host,
                                             std::unique_ptr<platform::HttpClient> client,
                                             std::string cookieHost = "");
// A CSV service with its own tickers (see StooqTicker); the key goes with every request as
// apikey when one is set. Without a valid key it answers with a browser-check page (status 200),
// which is named as such in the failure.
std::unique_ptr<PriceSource> MakeStooqSource(std::string host,
                                             std::unique_ptr<platform::HttpClient> client,
                                             std::string key = "");

// Tries each source in turn until one gives an answer that would be stored (see
// StoredAnswerProblem); the result's servedBy names it. When none does, the failure names each
// with its reason ("chart: ...; tiingo: ...").
struct NamedSource {
  std::string name;
  std::unique_ptr<PriceSource> source;
};
std::unique_ptr<PriceSource> MakeChainSource(std::vector<NamedSource> sources);
// A keyed CSV service; the token goes with every request.
std::unique_ptr<PriceSource> MakeTiingoSource(std::string host, std::string token,
                                              std::unique_ptr<platform::HttpClient> client);

// A client for a service of the [Services] section, over libcurl: its time-out, answer limit
// and retries, and with pace the pause between two requests.
std::unique_ptr<platform::HttpClient> MakeServiceClient(const settings::ServiceSettings& services,
                                                        const char* userAgent, bool pace,
                                                        const platform::RequestHooks& hooks,
                                                        bool keepCookies = false);

// The source the [Services] section chooses over MakeServiceClient (a chain when Provider names
// several); every service but the historical-quotes one gets the pause.
std::unique_ptr<PriceSource> MakePriceSource(const settings::ServiceSettings& services,
                                             const platform::RequestHooks& hooks = {});

// "aapl.us" for AAPL; indexes by their own names (^IXIC is ^ndq); a symbol with a market
// suffix ("bmw.de") keeps it; always lower case.
std::string StooqTicker(const std::string& symbol);

}  // namespace halvard::data
