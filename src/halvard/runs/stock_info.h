#pragma once
// What the information page beside the chart shows of a symbol: its row in the stock database.

#include <optional>
#include <string>

#include "halvard/runs/session.h"

namespace halvard::runs {

struct StockInfo {
  std::string name;  // empty when none is stored
  std::string exchange;
  std::string industry;
  std::string summary;
  double epsRank = 0;
  double rsRank = 0;
};

// The symbol's row ("Not yet downloaded" and "N/A" for a symbol without one); nothing when the
// stock database could not be opened. An engine error, or a symbol that is no name
// (data::SymbolProblem), is a halvard::Error.
std::optional<StockInfo> ReadStockInfo(Session& s, const std::string& symbol);

// The page as text, one "Label : value" line each (the company name alone on the first line,
// "Company" when none is stored), each line ended by CR LF.
std::string StockInfoText(const StockInfo& info);

}  // namespace halvard::runs
