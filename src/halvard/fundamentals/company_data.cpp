// The company data of one stock from the two services: the quotes line (name, exchange, EPS and
// the two estimates) and the profile page (business summary and industry).

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "halvard/data/symbol_name.h"
#include "halvard/fundamentals/quoted_text.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/fundamentals/stock_data_store.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::fundamentals {
namespace {

// The page extraction counts positions from 1, with 0 for "not found", and fails as soon as a
// length comes out negative; these two keep that arithmetic so that a missing marker fails
// exactly where it always did. (Positions are 64-bit: today's pages are far longer than 32,767.)
long InStr(long start, std::string_view text, std::string_view find) {
  if (start < 1 || start > static_cast<long>(text.size())) return 0;
  const auto from = text.begin() + (start - 1);
  const auto at = std::search(from, text.end(), find.begin(), find.end(), [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  });
  return at == text.end() ? 0 : static_cast<long>(at - text.begin()) + 1;
}

// length characters from start (1-based); nothing when the length is negative.
std::optional<std::string> Mid(std::string_view text, long start, long length) {
  if (length < 0 || start < 1) return std::nullopt;
  if (start > static_cast<long>(text.size())) return std::string();
  return std::string(text.substr(static_cast<size_t>(start - 1), static_cast<size_t>(length)));
}

// The text between the first opening marker and the closing marker after it.
std::optional<std::string> Between(std::string_view text, std::string_view open,
                                   std::string_view close) {
  const long s = InStr(1, text, open) + static_cast<long>(open.size());
  const long e = InStr(s, text, close);
  return Mid(text, s, e - s);
}

std::optional<double> Number(std::string_view field) {
  return platform::ParseDouble(platform::TrimEnd(field, "\r\n"));
}

}  // namespace

void StockDataStore::downloadExchange(const std::string& symbol, std::string& name, double& eps,
                                      double& yearEstimate, double& nextYearEstimate,
                                      std::string& exchange) {
  const auto body = FetchServiceBody(services_.http, services_.quotesHost,
                                     "/d/quotes.csv?s=" + data::AddressPart(symbol) + "&f=nxee7e8");
  if (!body) return;
  const std::string_view line = std::string_view(*body).substr(0, body->find("\r\n"));
  if (line.empty()) return;
  // A comma inside the quoted company name shifts the later fields; the service's field order
  // is all there is to go by.
  std::array<std::string_view, 5> fields;
  const size_t count = platform::SplitFields(line, fields);
  name = std::string(fields[0]);
  if (count < 2) return;
  exchange = std::string(fields[1]);
  double* numbers[] = {&eps, &yearEstimate, &nextYearEstimate};
  for (size_t i = 0; i < 3; ++i) {
    const std::optional<double> value = count > i + 2 ? Number(fields[i + 2]) : std::nullopt;
    if (!value) return;
    *numbers[i] = *value;
  }
}

void StockDataStore::getSummaryInfo(const std::string& symbol, std::string& description,
                                    std::string& industry) {
  const auto page = FetchServiceBody(services_.http, services_.profileHost,
                                     "/q/pr?s=" + data::AddressPart(symbol));
  if (!page) return;
  // The summary sits in the first cell of the first row after its heading; each narrowing is
  // kept as soon as it is made, so a page missing a later marker leaves the wider text.
  const auto summary = Between(*page, "MULTEX ABRIDGED BUSINESS SUMMARY", "View Key Statistics");
  if (!summary) return;
  description = *summary;
  for (const auto& [open, close] : {std::pair{"<tr>", "</tr>"}, std::pair{"<td>", "</td>"}}) {
    const auto cell = Between(description, open, close);
    if (!cell) return;
    description = *cell;
  }

  const auto link = Between(*page, "Industry:", "</a>");
  if (!link) return;
  industry = *link;
  // The link text follows "html" and the two characters that close the link's address and tag.
  industry = *Mid(industry, InStr(1, industry, "html") + 6, static_cast<long>(industry.size()));
  industry = ReplaceAll(industry, "&amp;", "&");
}

}  // namespace halvard::fundamentals
