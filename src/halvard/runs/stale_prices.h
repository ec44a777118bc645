#pragma once
// Prices that stopped being downloaded look like prices with no signal: a run over a list says
// when the newest day of its first stock (the one the list shows) lies well behind today.

#include <optional>
#include <string>

#include "halvard/runs/session.h"

namespace halvard::runs {

// Weekdays after `newest` up to and including `today` (holidays are not known, so counted).
int TradingDaysSince(double newest, double today);

// True when newest lies more than five trading days before today: the prices stopped coming.
bool PricesAreStale(double newest, double today);

// "newest prices are from 12/29/2017" when the price file of the list's row 0 loads and its
// newest day lies more than five trading days before today; nothing otherwise.
std::optional<std::string> StalePricesWarning(const Session& session, double today);

}  // namespace halvard::runs
