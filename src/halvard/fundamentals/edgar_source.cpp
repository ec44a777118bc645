// The SEC's public company files: the ticker list (with the CIK and exchange of every listed
// company), then per company the submissions document (name, SIC industry) and the company facts
// (the annual diluted EPS). The SEC has no business summary and no estimates: both stay empty.

#include <algorithm>
#include <map>

#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"
#include "halvard/error.h"
#include "halvard/fundamentals/fundamentals_source.h"

namespace halvard::fundamentals {
namespace {

// The SEC's published limit is ten requests a second; a tenth of a second between two keeps
// under it whatever the answers' speed.
constexpr int kEdgarPauseMilliseconds = 100;

class EdgarSource : public FactsSource {
 public:
  EdgarSource(const settings::ServiceSettings& services, const platform::RequestHooks& hooks)
      : files_(data::BaseUrl(services.edgarHost)),
        documents_(data::BaseUrl(services.edgarDataHost)) {
    if (NeedsContact(services)) throw Error(kContactNeeded);
    settings::ServiceSettings paced = services;
    paced.pauseMilliseconds = std::max(paced.pauseMilliseconds, kEdgarPauseMilliseconds);
    agent_ = services.contact;
    http_ = data::MakeServiceClient(paced, agent_.c_str(), true, hooks);
  }

 protected:
  std::optional<CompanyFacts> Facts(const std::string& symbol, Need need,
                                    std::string& why) override {
    const EdgarCompany* company = Company(symbol, why);
    if (company == nullptr) return std::nullopt;
    CompanyFacts facts;
    facts.name = company->name;
    facts.exchange = company->exchange;
    if (need == Need::kEverything) {
      const auto body = Get(documents_ + "/submissions/CIK" + company->cik + ".json", why);
      if (!body) return std::nullopt;
      const auto submissions = ReadEdgarSubmissions(*body, EdgarTicker(symbol));
      if (!submissions) return Wrong("submissions", *body, why);
      if (!submissions->name.empty()) facts.name = submissions->name;
      if (facts.exchange.empty()) facts.exchange = submissions->exchange;
      facts.industry = submissions->industry;
    }
    const auto body = Get(documents_ + "/api/xbrl/companyfacts/CIK" + company->cik + ".json", why);
    if (!body) return std::nullopt;
    const auto eps = ReadEdgarAnnualEps(*body);
    if (!eps) return Wrong("company facts", *body, why);
    facts.eps = *eps;
    return facts;
  }

 private:
  // The body of a 2xx answer, or nothing with why.
  std::optional<std::string> Get(const std::string& url, std::string& why) {
    platform::HttpResponse response = http_->Get(url);
    if (std::string refusal = data::RefusalOf(response, "company data"); !refusal.empty()) {
      why = url + ": " + refusal;
      return std::nullopt;
    }
    return std::move(response.body);
  }

  static std::nullopt_t Wrong(const char* document, std::string_view body, std::string& why) {
    why = data::WrongShape(std::string("not the SEC's ") + document + " document", body);
    return std::nullopt;
  }

  // The ticker list is asked for once a run; a run whose list did not come fails every symbol
  // with the same reason instead of asking again for each.
  const EdgarCompany* Company(const std::string& symbol, std::string& why) {
    if (!tickers_ && tickersFailure_.empty()) {
      std::string failure;
      if (const auto body = Get(files_ + "/files/company_tickers_exchange.json", failure)) {
        tickers_ = ReadEdgarTickers(*body);
        if (!tickers_) Wrong("ticker list", *body, failure);
      }
      tickersFailure_ = tickers_ ? "" : "the SEC's ticker list: " + failure;
    }
    if (!tickers_) {
      why = tickersFailure_;
      return nullptr;
    }
    const auto it = tickers_->find(EdgarTicker(symbol));
    if (it == tickers_->end()) {
      why = "the SEC lists no company with the ticker " + EdgarTicker(symbol);
      return nullptr;
    }
    return &it->second;
  }

  std::string files_;
  std::string documents_;
  std::string agent_;
  std::unique_ptr<platform::HttpClient> http_;
  std::optional<std::map<std::string, EdgarCompany>> tickers_;
  std::string tickersFailure_;
};

}  // namespace

std::unique_ptr<FundamentalsSource> MakeEdgarSource(const settings::ServiceSettings& services,
                                                    const platform::RequestHooks& hooks) {
  return std::make_unique<EdgarSource>(services, hooks);
}

}  // namespace halvard::fundamentals
