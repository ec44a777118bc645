#pragma once
// StockDataStore: the fundamental data of every stock, one row a symbol in the Stocks table of
// stockdata.mdb (an SQLite file in the watch-list folder). Every operation is one or two SQL
// statements with the symbol and the values bound as parameters, so any text (a name with an
// apostrophe, a hostile answer) is stored exactly as given and never changes another row; no
// data is cached. An engine error is a halvard::Error carrying the engine's message and the
// statement.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "halvard/fundamentals/sql_database.h"
#include "halvard/platform/http_client.h"
#include "halvard/platform/progress.h"

namespace halvard::fundamentals {

// Where the company data comes from: the quotes line and the profile page, each a base URL.
struct CompanyServices {
  platform::HttpClient* http = nullptr;
  std::string quotesHost;
  std::string profileHost;
};

class StockDataStore {
 public:
  StockDataStore() = default;
  StockDataStore(const StockDataStore&) = delete;
  StockDataStore& operator=(const StockDataStore&) = delete;

  // Opens the file and adds the two RS-average columns; any error ends it silently (on a
  // database that already has them the first ALTER fails and the second is not tried). A file
  // that does not exist yet is first created with an empty Stocks table.
  void Init(const std::filesystem::path& path);
  // Opens an existing file for reading only, without adding columns, so that a folder the user
  // may not write to can be browsed. A file that does not exist yet is not created: the store
  // reads an empty table held in memory and refuses writes. A failure leaves the store closed,
  // silently, as Init does.
  void InitReadOnly(const std::filesystem::path& path);
  void Cleanup();
  bool isOpen() const { return db_.isOpen(); }

  // The symbol's row into the outputs; a Null value leaves its output as it was. No row:
  // description "Not yet downloaded", industry and exchange "N/A", ranks and name untouched.
  void GetStockData(const std::string& symbol, std::string& description, double& epsRank,
                    double& rsRank, std::string& industry, std::string& exchange,
                    std::string& name);
  // Update, and when that did not touch exactly one row, insert.
  void SetStockData(const std::string& symbol, const std::string& description, double rsRank,
                    double epsRank, const std::string& industry, const std::string& exchange,
                    const std::string& name, double eps, double yearEstimate,
                    double nextYearEstimate);
  // The same for a source that may not have every figure: a missing one is stored as Null, so
  // the ranks and scans pass the stock over instead of reading a figure nobody gave.
  void SetStockData(const std::string& symbol, const std::string& description, double rsRank,
                    double epsRank, const std::string& industry, const std::string& exchange,
                    const std::string& name, std::optional<double> eps,
                    std::optional<double> yearEstimate, std::optional<double> nextYearEstimate);
  void SetSummary(const std::string& symbol, const std::string& description);
  void SetIndustry(const std::string& symbol, const std::string& industry);
  void SetExchange(const std::string& symbol, const std::string& exchange);  // always fails
  void SetEPSRank(const std::string& symbol, double rank);
  void SetRSRank(const std::string& symbol, double rank);
  void SetRSAvg(const std::string& symbol, double avg, double prevAvg);

  // Percentile ranks 0..100 of every stock with EPS above 0, and of every stock by AvgRS. Each
  // stored rank is a progress step; a cancel stops between two stocks, ranks written so far stay.
  void ComputeEPSRank(platform::Progress& progress);
  void ComputeRSRank(platform::Progress& progress);

  // The rank scans: the symbols of the stocks ranked at least 100 - percentage, the increasing
  // scans' largest rise first.
  std::vector<std::string> EPSRankScan(int16_t percentage);
  std::vector<std::string> RSRankScan(int16_t percentage);
  std::vector<std::string> IncreasingRSScan(int16_t percentage);
  std::vector<std::string> IncreasingEPSScan(int16_t percentage);
  // Whether the table has stocks but none with an EPS estimate: their company data came from a
  // source without estimates, and the increasing-EPS scan has nothing to compare.
  bool LacksEstimates();

  // Company data over the services set by UseServices.
  void UseServices(CompanyServices services) { services_ = std::move(services); }
  // Name, exchange, EPS and both estimates from the quotes line; the profile page's summary and
  // industry; stored with both ranks 0.
  void getDataForStock(const std::string& symbol);
  // One quotes-line request; any failure ends it silently, outputs set so far stay set.
  void downloadExchange(const std::string& symbol, std::string& name, double& eps,
                        double& yearEstimate, double& nextYearEstimate, std::string& exchange);
  // One profile-page request; any failure (a marker missing) ends it silently.
  void getSummaryInfo(const std::string& symbol, std::string& description, std::string& industry);

 private:
  void CreateStocksTable();
  void AddRSAverageColumns();
  std::vector<std::string> SymbolsInTop(const std::string& query, int16_t percentage);
  void SetColumn(const char* column, SqlValue value, const std::string& symbol);

  SqlDatabase db_;
  CompanyServices services_;
};

}  // namespace halvard::fundamentals
