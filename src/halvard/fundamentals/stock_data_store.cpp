#include "halvard/fundamentals/stock_data_store.h"

#include "halvard/error.h"
#include "halvard/fundamentals/quoted_text.h"

namespace halvard::fundamentals {
namespace {

// A fresh install has no database yet; this is the table the program expects to find, before
// the two RS-average columns Init adds.
constexpr const char* kCreateStocks =
    "CREATE TABLE Stocks (Symbol TEXT, Description TEXT, EPSRank DOUBLE, RSRank DOUBLE, "
    "Exchange TEXT, Industry TEXT, Name TEXT, EPS DOUBLE, YearEPSEstimate DOUBLE, "
    "NextYearEPSEstimate DOUBLE)";

// Every statement finds its row by symbol; the symbol is always the last value bound.
constexpr const char* kWhereSymbol = " WHERE Symbol = ?";

}  // namespace

void StockDataStore::Init(const std::filesystem::path& path) {
  // Every failure here is silent: an existing database already has the RS-average columns, so
  // the first ALTER fails there on every start and the second is rightly not tried.
  try {
    std::error_code ignored;
    const bool fresh = !std::filesystem::exists(path, ignored);
    db_.Open(path, fresh);
    if (fresh) CreateStocksTable();
    AddRSAverageColumns();
  } catch (const Error&) {
  }
}

void StockDataStore::InitReadOnly(const std::filesystem::path& path) {
  try {
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) {
      db_.Open(path, false, true);
      return;
    }
    // Nothing downloaded yet: an empty table answers every read, and the file is first created
    // by a command that writes it, so looking never writes (nor needs a folder open to writing).
    db_.OpenInMemory(path);
    CreateStocksTable();
    AddRSAverageColumns();
    db_.Execute("PRAGMA query_only = ON");  // a write here would be lost: refused instead
  } catch (const Error&) {
    db_.Close();
  }
}

void StockDataStore::CreateStocksTable() {
  db_.Execute(kCreateStocks);
  // Every statement finds its row by symbol; not unique, since nothing forbids a second row.
  db_.Execute("CREATE INDEX StocksBySymbol ON Stocks (Symbol)");
}

void StockDataStore::AddRSAverageColumns() {
  db_.Execute("ALTER TABLE Stocks ADD COLUMN PrevAvgRS Number;");
  db_.Execute("ALTER TABLE Stocks ADD COLUMN AvgRS Number;");
}

void StockDataStore::Cleanup() {
  db_.Close();
}

void StockDataStore::GetStockData(const std::string& symbol, std::string& description,
                                  double& epsRank, double& rsRank, std::string& industry,
                                  std::string& exchange, std::string& name) {
  const auto rows = db_.Query("Select * from Stocks where Symbol = ?", {symbol});
  if (rows.empty()) {
    description = "Not yet downloaded";
    exchange = "N/A";
    industry = "N/A";
    return;
  }
  for (const SqlField& field : rows.front()) {
    if (field.isNull()) continue;
    // clang-format off
    if (field.name == "Description") description = field.asText();
    else if (field.name == "EPSRank") epsRank = field.asNumber();
    else if (field.name == "RSRank") rsRank = field.asNumber();
    else if (field.name == "Industry") industry = field.asText();
    else if (field.name == "Exchange") exchange = field.asText();
    else if (field.name == "Name") name = field.asText();
    // clang-format on
  }
}

void StockDataStore::SetStockData(const std::string& symbol, const std::string& description,
                                  double rsRank, double epsRank, const std::string& industry,
                                  const std::string& exchange, const std::string& name, double eps,
                                  double yearEstimate, double nextYearEstimate) {
  SetStockData(symbol, description, rsRank, epsRank, industry, exchange, name,
               std::optional<double>(eps), std::optional<double>(yearEstimate),
               std::optional<double>(nextYearEstimate));
}

void StockDataStore::SetStockData(const std::string& symbol, const std::string& description,
                                  double rsRank, double epsRank, const std::string& industry,
                                  const std::string& exchange, const std::string& name,
                                  std::optional<double> epsGiven, std::optional<double> yearGiven,
                                  std::optional<double> nextYearGiven) {
  const auto figure = [](std::optional<double> value) -> SqlValue {
    if (value) return *value;
    return std::monostate{};
  };
  const SqlValue eps = figure(epsGiven);
  const SqlValue yearEstimate = figure(yearGiven);
  const SqlValue nextYearEstimate = figure(nextYearGiven);
  // SQLite refuses a table prefix on the columns of a SET clause.
  const int updated = db_.Execute(
      std::string("UPDATE Stocks SET Description = ?, EPSRank = ?, RSRank = ?, EPS = ?, "
                  "YearEPSEstimate = ?, NextYearEPSEstimate = ?, Name = ?, Exchange = ?, "
                  "Industry = ?") +
          kWhereSymbol,
      {description, epsRank, rsRank, eps, yearEstimate, nextYearEstimate, name, exchange, industry,
       symbol});
  // Anything but exactly one row updated means insert, even when two rows share the symbol.
  if (updated == 1) return;
  db_.Execute(
      "INSERT INTO Stocks ( Symbol, Description, EPSRank, RSRank, Exchange, Industry, Name, EPS, "
      "YearEPSEstimate, NextYearEPSEstimate ) Values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {symbol, description, epsRank, rsRank, exchange, industry, name, eps, yearEstimate,
       nextYearEstimate});
}

void StockDataStore::SetColumn(const char* column, SqlValue value, const std::string& symbol) {
  db_.Execute(std::string("UPDATE Stocks SET ") + column + " = ?" + kWhereSymbol,
              {std::move(value), symbol});
}

void StockDataStore::SetSummary(const std::string& symbol, const std::string& description) {
  SetColumn("Description", description, symbol);
}

void StockDataStore::SetIndustry(const std::string& symbol, const std::string& industry) {
  SetColumn("Industry", industry, symbol);
}

void StockDataStore::SetExchange(const std::string& symbol, const std::string& exchange) {
  // The comma after SET has always made this statement fail; the exchange is written with the
  // whole row instead, and nothing calls this.
  SetColumn(", Exchange", exchange, symbol);
}

void StockDataStore::SetEPSRank(const std::string& symbol, double rank) {
  SetColumn("EPSRank", rank, symbol);
}

void StockDataStore::SetRSRank(const std::string& symbol, double rank) {
  SetColumn("RSRank", rank, symbol);
}

void StockDataStore::SetRSAvg(const std::string& symbol, double avg, double prevAvg) {
  SetColumn("PrevAvgRS", prevAvg, symbol);
  SetColumn("AvgRS", avg, symbol);
}

void StockDataStore::getDataForStock(const std::string& symbol) {
  std::string name;
  std::string exchange;
  double eps = 0;
  double yearEstimate = 0;
  double nextYearEstimate = 0;
  downloadExchange(symbol, name, eps, yearEstimate, nextYearEstimate, exchange);
  exchange = ReplaceAll(exchange, "\"", "");
  name = ReplaceAll(ReplaceAll(name, "\"", ""), "&amp;", "&");
  std::string description;
  std::string industry;
  getSummaryInfo(symbol, description, industry);
  SetStockData(symbol, description, 0, 0, industry, exchange, name, eps, yearEstimate,
               nextYearEstimate);
}

}  // namespace halvard::fundamentals
