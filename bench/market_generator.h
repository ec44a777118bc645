#pragma once
// A synthetic market: random-walk daily prices for many symbols and an index, written as price
// files, with a watch list of every symbol. The same seed gives the same files byte for byte on
// every machine, so a benchmark figure or a bug report can name the market it ran on.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace halvard::bench {

// The newest day of every generated file; the older days are the weekdays before it. A fixed
// day keeps the output independent of when it is generated.
inline constexpr int kNewestYear = 2017;
inline constexpr int kNewestMonth = 12;
inline constexpr int kNewestDay = 29;

inline constexpr const char* kMarketListName = "market.inc";

// What the benchmarks run on and what halvard-market writes when not told otherwise: a year of
// a large exchange.
inline constexpr int kDefaultSymbols = 5000;
inline constexpr int kDefaultBars = 252;
inline constexpr uint64_t kDefaultSeed = 600;

// "S0000" ... : four digits, or as many as the largest number needs.
std::string SymbolName(int number, int symbols);
std::vector<std::string> SymbolNames(int symbols);

// Writes folder/<SYMBOL>.txt for every symbol, folder/^IXIC.txt and folder/market.inc, each of
// `bars` day lines (1 to 1001, what a price file may hold), creating the folder when needed and
// replacing files of the same names. Throws std::invalid_argument on a count out of range and
// std::runtime_error when a file cannot be written.
void GenerateMarket(const std::filesystem::path& folder, int symbols, int bars, uint64_t seed);

// GenerateMarket unless the folder already holds a complete market of the same parameters
// (a stamp file written last records them). Returns true when it generated.
bool EnsureMarket(const std::filesystem::path& folder, int symbols, int bars, uint64_t seed);

}  // namespace halvard::bench
