// Percentile ranks of the stocks by EPS and by average relative strength, and the four scans
// over them.

#include <cmath>
#include <string>
#include <vector>

#include "halvard/error.h"
#include "halvard/fundamentals/stock_data_store.h"

namespace halvard::fundamentals {
namespace {

struct RankStatements {
  const char* total;
  const char* groups;
  const char* symbols;
  const char* status;
};

constexpr RankStatements kEPS = {
    "Select count(*) from Stocks where eps>0",
    "Select count(EPS),EPS from Stocks where EPS>0 GROUP BY EPS order by eps",
    "Select Symbol from Stocks where EPS>0 order by eps", "Computing EPS Rank"};

// The total counts every row, while the group of rows without an AvgRS counts none of them and
// the symbols come with those rows first: with such rows the ranks are handed out of step with
// the groups. Every stock with a price file gets an AvgRS, so the case stays rare.
constexpr RankStatements kRS = {
    "Select count(*) from Stocks",
    "Select count(AvgRS),AvgRS from Stocks GROUP BY AvgRS order by AvgRS",
    "Select Symbol from Stocks order by AvgRS", "Computing RS Rank"};

// Every stock of a group of equal values gets the rank of the group's last member: the whole
// part of 100 × (stocks with a value at most this one) / total.
template <class Store>
void Rank(SqlDatabase& db, const RankStatements& q, platform::Progress& progress, Store store) {
  const auto total = db.Query(q.total);
  if (total.empty()) return;
  const double t = total.front().front().asNumber();
  const auto groups = db.Query(q.groups);
  const auto symbols = db.Query(q.symbols);
  size_t next = 0;
  double c = 0;
  for (const SqlRow& group : groups) {
    const double n = group.front().asNumber();
    c += n;
    const double rank = std::floor(c * 100 / t);
    for (double k = 0; k < n; ++k) {
      progress.Step(static_cast<int>(next), static_cast<int>(symbols.size()), q.status);
      if (progress.Cancelled()) return;
      if (next == symbols.size()) {
        throw Error(db.path().string() + ": the stocks ran out before the groups did");
      }
      store(symbols[next++].front().asText(), rank);
    }
  }
}

}  // namespace

void StockDataStore::ComputeEPSRank(platform::Progress& progress) {
  Rank(db_, kEPS, progress, [this](const std::string& s, double r) { SetEPSRank(s, r); });
}

void StockDataStore::ComputeRSRank(platform::Progress& progress) {
  Rank(db_, kRS, progress, [this](const std::string& s, double r) { SetRSRank(s, r); });
}

std::vector<std::string> StockDataStore::EPSRankScan(int16_t percentage) {
  return SymbolsInTop("Select Symbol from Stocks where EPSRank>=?", percentage);
}

std::vector<std::string> StockDataStore::RSRankScan(int16_t percentage) {
  return SymbolsInTop("Select Symbol from Stocks where RSRank>=?", percentage);
}

std::vector<std::string> StockDataStore::IncreasingRSScan(int16_t percentage) {
  return SymbolsInTop(
      "Select Symbol from Stocks where AvgRS >= PrevAvgRS and RSRank>=? and EPS > 0 "
      "ORDER BY (AvgRS - PrevAvgRS) DESC, RSRank DESC",
      percentage);
}

std::vector<std::string> StockDataStore::IncreasingEPSScan(int16_t percentage) {
  return SymbolsInTop(
      "Select Symbol from Stocks where YearEPSEstimate > EPS and EPSRank>=? and EPS > 0 "
      "ORDER BY (YearEPSEstimate - EPS) DESC, EPSRank DESC",
      percentage);
}

// Every scan keeps the stocks ranked at least 100 - percentage.
std::vector<std::string> StockDataStore::SymbolsInTop(const std::string& query,
                                                      int16_t percentage) {
  const SqlValues threshold = {int64_t{100} - percentage};
  std::vector<std::string> symbols;
  for (const SqlRow& row : db_.Query(query, threshold)) symbols.push_back(row.front().asText());
  return symbols;
}

bool StockDataStore::LacksEstimates() {
  const auto rows = db_.Query("Select count(*), count(YearEPSEstimate) from Stocks");
  return !rows.empty() && rows.front().size() == 2 && rows.front()[0].asNumber() > 0 &&
         rows.front()[1].asNumber() == 0;
}

}  // namespace halvard::fundamentals
