#include "halvard/fundamentals/fundamentals_source.h"

#include "halvard/fundamentals/eps_store.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/platform/number_text.h"

namespace halvard::fundamentals {
namespace {

std::string FigureText(const std::optional<double>& value) {
  return value ? platform::FormatGeneral(*value) : "";
}

// The quotes line and the profile page, as the company data has always come: the store's own
// getDataForStock, and the quotes line's first line as the EPS line.
class QuotesSource : public FundamentalsSource {
 public:
  explicit QuotesSource(CompanyServices services) : services_(std::move(services)) {}

  std::string StoreCompanyData(StockDataStore& db, const std::string& symbol) override {
    db.UseServices(services_);
    db.getDataForStock(symbol);
    return "";
  }

  std::optional<std::string> EPSLine(const std::string& symbol, std::string& why) override {
    auto line = services_.http != nullptr
                    ? FetchQuotesEPSLine(*services_.http, services_.quotesHost, symbol)
                    : std::nullopt;
    if (!line) why = "the quotes service gave no EPS line";
    return line;
  }

 private:
  CompanyServices services_;
};

// The quotes source with a client of its own.
class OwningQuotesSource : public QuotesSource {
 public:
  OwningQuotesSource(std::unique_ptr<platform::HttpClient> http, const settings::ServiceSettings& s)
      : QuotesSource({http.get(), s.quotesHost, s.profileHost}), http_(std::move(http)) {}

 private:
  std::unique_ptr<platform::HttpClient> http_;
};

}  // namespace

std::string EPSLineOf(const std::string& symbol, const CompanyFacts& facts) {
  return "\"" + symbol + "\"," + FigureText(facts.eps) + "," + FigureText(facts.yearEstimate) +
         "," + FigureText(facts.nextYearEstimate);
}

std::string FactsSource::StoreCompanyData(StockDataStore& db, const std::string& symbol) {
  std::string why;
  const std::optional<CompanyFacts> facts = Facts(symbol, Need::kEverything, why);
  if (!facts) return why;
  db.SetStockData(symbol, facts->description, 0, 0, facts->industry, facts->exchange, facts->name,
                  facts->eps, facts->yearEstimate, facts->nextYearEstimate);
  return "";
}

std::optional<std::string> FactsSource::EPSLine(const std::string& symbol, std::string& why) {
  const std::optional<CompanyFacts> facts = Facts(symbol, Need::kEps, why);
  if (!facts) return std::nullopt;
  return EPSLineOf(symbol, *facts);
}

bool NeedsContact(const settings::ServiceSettings& services) {
  return services.fundamentals == "edgar" && services.contact.empty();
}

std::unique_ptr<FundamentalsSource> MakeQuotesSource(CompanyServices services) {
  return std::make_unique<QuotesSource>(std::move(services));
}

std::unique_ptr<FundamentalsSource> MakeFundamentalsSource(
    const settings::ServiceSettings& services, const platform::RequestHooks& hooks) {
  if (services.fundamentals == "summary") return MakeSummarySource(services, hooks);
  if (services.fundamentals == "quotes") {
    return std::make_unique<OwningQuotesSource>(MakeCompanyDataClient(services), services);
  }
  return MakeEdgarSource(services, hooks);
}

}  // namespace halvard::fundamentals
