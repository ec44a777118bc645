#include "halvard/runs/stale_prices.h"

#include <cmath>
#include <memory>

#include "halvard/data/file_parser.h"
#include "halvard/error.h"
#include "halvard/platform/date_text.h"

namespace halvard::runs {
namespace {

constexpr int kStaleAfterTradingDays = 5;

// 12/30/1899, day 0 of the serial count, was a Saturday.
bool IsWeekday(long long serial) {
  const long long weekday = ((serial % 7) + 7) % 7;  // 0 Saturday, 1 Sunday
  return weekday >= 2;
}

}  // namespace

int TradingDaysSince(double newest, double today) {
  int days = 0;
  for (auto d = static_cast<long long>(std::floor(newest)) + 1;
       d <= static_cast<long long>(std::floor(today)); ++d) {
    if (IsWeekday(d)) ++days;
  }
  return days;
}

bool PricesAreStale(double newest, double today) {
  return TradingDaysSince(newest, today) > kStaleAfterTradingDays;
}

std::optional<std::string> StalePricesWarning(const Session& session, double today) {
  if (session.symbols.empty()) return std::nullopt;
  // Read apart from the session's view, which by now may hold another stock of the list.
  const auto row0 = std::make_unique<data::PriceSeries>();
  try {
    if (!data::LoadStockFile(*row0, session.StockPath(session.symbols[0]))) return std::nullopt;
  } catch (const Error&) {
    return std::nullopt;  // the run itself names what is wrong with the file
  }
  if (!PricesAreStale(row0->newestDate, today)) return std::nullopt;
  return "newest prices are from " + platform::FormatShortDate(row0->newestDate);
}

}  // namespace halvard::runs
