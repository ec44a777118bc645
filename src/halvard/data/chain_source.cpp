// A provider chain: the services of [Services] Provider tried in turn for each symbol, so that a
// symbol one service lacks or refuses still comes from the next.

#include "halvard/data/downloader.h"
#include "halvard/data/price_sources.h"

namespace halvard::data {
namespace {

class ChainSource : public PriceSource {
 public:
  explicit ChainSource(std::vector<NamedSource> sources) : sources_(std::move(sources)) {}

  FetchResult Fetch(const std::string& symbol, double startDate, double endDate) override {
    std::string failures;
    for (NamedSource& named : sources_) {
      FetchResult result = named.source->Fetch(symbol, startDate, endDate);
      if (result.cancelled) return result;
      std::string why = result.ok() ? StoredAnswerProblem(result.body, symbol) : result.failure;
      if (why.empty()) {
        result.servedBy = named.name;
        return result;
      }
      failures += (failures.empty() ? "" : "; ") + named.name + ": " + why;
    }
    FetchResult none;
    none.failure = failures;
    return none;
  }

 private:
  std::vector<NamedSource> sources_;
};

}  // namespace

std::unique_ptr<PriceSource> MakeChainSource(std::vector<NamedSource> sources) {
  return std::make_unique<ChainSource>(std::move(sources));
}

}  // namespace halvard::data
