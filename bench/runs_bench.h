#pragma once
// Whole runs over a list of the generated market, as a user starts them.

#include <string>

namespace halvard::bench {

// folder holds the market: its price files, ^IXIC.txt and the list market.inc.
void RegisterRunBenchmarks(const std::string& folder);

}  // namespace halvard::bench
