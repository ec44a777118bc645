// The historical-quotes service as it always answered: its CSV is the stored form already.

#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"
#include "halvard/data/symbol_name.h"
#include "halvard/platform/date_text.h"

namespace halvard::data {

TableSource::TableSource(std::string host, std::unique_ptr<platform::HttpClient> client)
    : base_(BaseUrl(host)), client_(std::move(client)) {}

std::string TableSource::BuildRequestAddress(const std::string& symbol, double startDate,
                                             double endDate) const {
  const platform::CivilDate from = platform::CivilFromSerial(startDate);
  const platform::CivilDate to = platform::CivilFromSerial(endDate);
  using std::to_string;
  return base_ + "/table.csv?a=" + to_string(from.month - 1) + "&b=" + to_string(from.day) +
         "&c=" + to_string(from.year) + "&d=" + to_string(to.month - 1) +
         "&e=" + to_string(to.day) + "&f=" + to_string(to.year) +
         "&g=d&y=0&ignore=.csv&s=" + AddressPart(symbol);
}

FetchResult TableSource::Fetch(const std::string& symbol, double startDate, double endDate) {
  platform::HttpResponse response = client_->Get(BuildRequestAddress(symbol, startDate, endDate));
  if (std::string refusal = RefusalOf(response); !refusal.empty()) {
    return Refused(response, std::move(refusal));
  }
  return {std::move(response.body), ""};
}

}  // namespace halvard::data
