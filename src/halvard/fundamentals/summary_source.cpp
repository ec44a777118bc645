// The chart service's quote-summary document: one request per stock for everything the Stocks
// table keeps, the estimates included, through the same cookie-and-crumb handshake as the prices.

#include "halvard/data/crumb_session.h"
#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"
#include "halvard/data/symbol_name.h"
#include "halvard/fundamentals/fundamentals_source.h"

namespace halvard::fundamentals {
namespace {

class SummarySource : public FactsSource {
 public:
  SummarySource(const settings::ServiceSettings& services, const platform::RequestHooks& hooks)
      : session_(services.chartHost, services.cookieHost,
                 data::MakeServiceClient(services, data::kBrowserAgent, true, hooks, true)) {}

 protected:
  std::optional<CompanyFacts> Facts(const std::string& symbol, Need, std::string& why) override {
    const std::string url = session_.base() + "/v10/finance/quoteSummary/" +
                            data::AddressPart(symbol) +
                            "?modules=price,assetProfile,defaultKeyStatistics,earningsTrend";
    const platform::HttpResponse response = session_.Get(url);
    if (std::string refusal = data::RefusalOf(response, "company data"); !refusal.empty()) {
      why = std::move(refusal);
      return std::nullopt;
    }
    auto facts = ReadQuoteSummary(response.body);
    if (!facts) why = data::WrongShape("no quote summary", response.body);
    return facts;
  }

 private:
  data::CrumbSession session_;
};

}  // namespace

std::unique_ptr<FundamentalsSource> MakeSummarySource(const settings::ServiceSettings& services,
                                                      const platform::RequestHooks& hooks) {
  return std::make_unique<SummarySource>(services, hooks);
}

}  // namespace halvard::fundamentals
