#pragma once
// What the price sources share: base addresses, the checks that tell price data from a page
// that only looks like an answer, and the stored body built from day rows.

#include <string>
#include <string_view>
#include <vector>

#include "halvard/platform/http_client.h"

namespace halvard::data {

// A configured host as a base address: "http://" added when no scheme is given, no final "/".
std::string BaseUrl(std::string_view host);

// Why an answer cannot be price data, or empty when it may be: no answer, a rate limit, an
// HTML page (challenge pages come with status 200), a JSON error object, an HTTP error status.
// The reason quotes the start of the body so the event log shows what the service said.
// expected names what the answer should have been ("price data", "company data").
std::string RefusalOf(const platform::HttpResponse& response,
                      std::string_view expected = "price data");

// Whether a body is an HTML page (blanks and a byte order mark before its first "<" allowed).
bool IsHtml(std::string_view body);

// The same wording for an answer whose content is not the expected CSV or JSON.
std::string WrongShape(std::string_view what, std::string_view body);

// One trading day, its values as the stored file gives them.
struct DayRow {
  double date = 0;  // day count from 12/30/1899
  std::string open, high, low, close, volume, adjClose;
};

// The header line, then the rows newest first (equal dates keep their order), LF line ends.
std::string StoredBody(std::vector<DayRow> rows);

// The form of dates and numbers of the stored body: 2011-12-30; 642.02 (at most four
// decimals, what the services' float values mean).
std::string IsoDate(double serial);
std::string PriceText(double value);

}  // namespace halvard::data
