#include "halvard/screener/service_screen.h"

#include <unordered_set>

#include "halvard/data/price_answer.h"
#include "halvard/error.h"
#include "halvard/screener/screen_query.h"

namespace halvard::screener {
namespace {

// The symbols of the answer, or a halvard::Error saying why it holds none.
std::vector<std::string> PageSymbols(const platform::HttpResponse& response, const std::string& url,
                                     int page) {
  const std::string where = "screener page " + std::to_string(page) + " (" + url + "): ";
  if (!response.answered()) throw Error(where + "no answer: " + response.failure);
  if (response.status < 200 || response.status > 299) {
    throw Error(where + "HTTP status " + std::to_string(response.status));
  }
  auto symbols = ParseScreenAnswer(response.body);
  if (!symbols) {
    throw Error(where +
                data::WrongShape("CSV with a header starting \"Symbol\" expected", response.body));
  }
  return std::move(*symbols);
}

}  // namespace

ScreenResult ScreenWithService(platform::HttpClient& http, const std::string& host,
                               const ScreenCriteria& c, platform::Progress& progress,
                               int maxPages) {
  const std::string base = data::BaseUrl(host);
  ScreenResult result;
  std::unordered_set<std::string> seen;
  for (int page = 1; page <= maxPages; ++page) {
    progress.Step(page - 1, maxPages, "Fetching screener page " + std::to_string(page));
    if (progress.Cancelled()) {
      result.cancelled = true;
      return result;
    }
    const std::string url = base + ScreenQuery(c, page);
    size_t added = 0;
    for (std::string& symbol : PageSymbols(http.Get(url), url, page)) {
      if (seen.insert(symbol).second) {
        result.symbols.push_back(std::move(symbol));
        ++added;
      }
    }
    result.pages = page;
    if (added == 0) return result;
  }
  result.pageCapReached = true;
  return result;
}

}  // namespace halvard::screener
