// The JSON documents of the company-data services (the SEC's ticker list, submissions and
// company facts, the quote-summary document) over any body.

#include "fuzz_support.h"
#include "halvard/fundamentals/company_answers.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const std::string_view body = fuzz::Text(data, size);
  fuzz::Refusable([&] {
    fundamentals::ReadEdgarTickers(body);
    fundamentals::ReadEdgarSubmissions(body, "AAPL");
    fundamentals::ReadEdgarAnnualEps(body);
    fundamentals::ReadQuoteSummary(body);
  });
  return 0;
}
