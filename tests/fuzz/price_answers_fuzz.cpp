// Every price service's answer over any body: the first byte chooses the service.

#include <memory>

#include "fuzz_support.h"
#include "halvard/data/price_sources.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  if (size == 0) return 0;
  auto answer = std::make_unique<fuzz::FixedAnswer>(std::string(fuzz::Text(data + 1, size - 1)));
  std::unique_ptr<data::PriceSource> source;
  switch (data[0] % 4) {
    case 0:
      source = std::make_unique<data::TableSource>("127.0.0.1", std::move(answer));
      break;
    case 1:
      source = data::MakeChartSource("127.0.0.1", std::move(answer));
      break;
    case 2:
      source = data::MakeStooqSource("127.0.0.1", std::move(answer));
      break;
    default:
      source = data::MakeTiingoSource("127.0.0.1", "KEY", std::move(answer));
      break;
  }
  fuzz::Refusable([&] { source->Fetch("FUZZ", 40000, 40400); });
  return 0;
}
