#pragma once
// FundamentalsSource: where company data and EPS lines come from, as [Services] Fundamentals
// chooses: edgar (the SEC's public company files; no key, no estimates), summary (the chart
// service's quote-summary document) or quotes (the quotes line and profile page). Every source
// fills the same row of the Stocks table (both ranks 0) and the same eps.dat line shape
// ("SYMBOL",EPS,this year's estimate,next year's estimate); a figure a source does not have
// stays empty, never 0.

#include <memory>
#include <optional>
#include <string>

#include "halvard/fundamentals/company_answers.h"
#include "halvard/fundamentals/stock_data_store.h"
#include "halvard/platform/paced_http_client.h"
#include "halvard/settings/services.h"

namespace halvard::fundamentals {

class FundamentalsSource {
 public:
  virtual ~FundamentalsSource() = default;
  // Fetches the stock's company data and stores its row; returns why nothing was stored, or
  // empty when the row was written.
  virtual std::string StoreCompanyData(StockDataStore& db, const std::string& symbol) = 0;
  // The stock's eps.dat line, or nothing with why.
  virtual std::optional<std::string> EPSLine(const std::string& symbol, std::string& why) = 0;
};

// A source that reads CompanyFacts: the row and the line are made the same way for all of them.
class FactsSource : public FundamentalsSource {
 public:
  enum class Need { kEps, kEverything };
  std::string StoreCompanyData(StockDataStore& db, const std::string& symbol) override;
  std::optional<std::string> EPSLine(const std::string& symbol, std::string& why) override;

 protected:
  // The facts of the symbol (only the EPS figures are needed for kEps), or nothing with why.
  virtual std::optional<CompanyFacts> Facts(const std::string& symbol, Need need,
                                            std::string& why) = 0;
};

// "\"AAPL\",6.13,," for AAPL with an EPS of 6.13 and no estimates.
std::string EPSLineOf(const std::string& symbol, const CompanyFacts& facts);

// The SEC asks every client to name itself: a [Services] Contact is needed for edgar.
inline constexpr const char* kContactNeeded =
    "the edgar service needs a contact for the SEC's User-Agent: set [Services] Contact to your "
    "name and e-mail (halvard config set Services Contact \"Jane Doe jane@example.com\")";
bool NeedsContact(const settings::ServiceSettings& services);

// The SEC's public company files through a client at most ten requests a second, with the
// contact as User-Agent. A missing contact is a halvard::Error (kContactNeeded).
std::unique_ptr<FundamentalsSource> MakeEdgarSource(const settings::ServiceSettings& services,
                                                    const platform::RequestHooks& hooks = {});
// The quote-summary document of the chart service, through the cookie-and-crumb handshake.
std::unique_ptr<FundamentalsSource> MakeSummarySource(const settings::ServiceSettings& services,
                                                      const platform::RequestHooks& hooks = {});
// The quotes line and the profile page over the given client.
std::unique_ptr<FundamentalsSource> MakeQuotesSource(CompanyServices services);

// The source [Services] Fundamentals chooses, with its own client.
std::unique_ptr<FundamentalsSource> MakeFundamentalsSource(
    const settings::ServiceSettings& services, const platform::RequestHooks& hooks = {});

}  // namespace halvard::fundamentals
