#pragma once
// The figures of the stock database the local screen reads, all rows at once: one query
// instead of one a price file, and no statement built from a symbol's text.

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>

namespace halvard::screener {

// One row of the Stocks table; a Null value is nullopt.
struct StockRow {
  std::optional<std::string> industry;
  std::optional<std::string> exchange;
  std::optional<double> eps;
  std::optional<double> yearEstimate;
  std::optional<double> nextYearEstimate;
};

class StockRows {
 public:
  // Every row of the Stocks table of the database file; when a symbol has several rows the
  // first counts, as when the information page reads it. An engine error is a halvard::Error.
  static StockRows Read(const std::filesystem::path& database);

  void Add(const std::string& symbol, StockRow row) { rows_.emplace(symbol, std::move(row)); }
  // The symbol's row (compared exactly as stored), or nullptr when it has none.
  const StockRow* Find(const std::string& symbol) const;

 private:
  std::unordered_map<std::string, StockRow> rows_;
};

}  // namespace halvard::screener
