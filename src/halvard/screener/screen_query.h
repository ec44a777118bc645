#pragma once
// The request to a screener service and the form of its answer.
//
// Request: GET <Screener Host>/screen?<criteria>&page=N, one parameter a criterion that is set,
// in the order of the criteria table, then the page (1 for the first):
//   a text criterion   KEY=TEXT, percent-encoded (industry=Oil%20%26%20Gas)
//   a range criterion  KEY=MIN..MAX in the shortest decimal form, either end left empty when not
//                      set (price=5..50, volume=100000.., pe=..15, performance=-10..)
// Answer: CSV text. The first line is a header whose first field is "Symbol" (any case); every
// further line starts with a symbol, the rest of the line is not read. Double quotes around a
// field and spaces are dropped; blank lines are skipped. A page past the last result is the
// header alone.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/screener/criteria.h"

namespace halvard::screener {

inline constexpr std::string_view kScreenPath = "/screen";

// The path and query of one page, to be appended to the host's base address.
std::string ScreenQuery(const ScreenCriteria& c, int page);

// Every byte but the unreserved letters, digits and "-._~" as %XX (a space as %20).
std::string EscapeQueryText(std::string_view text);

// The symbols of one page in order, or nothing when the body is not in the answer's form.
std::optional<std::vector<std::string>> ParseScreenAnswer(std::string_view body);

}  // namespace halvard::screener
