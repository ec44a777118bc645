#include "halvard/screener/stock_rows.h"

#include "halvard/fundamentals/sql_database.h"

namespace halvard::screener {
namespace {

std::optional<double> Number(const fundamentals::SqlField& field) {
  if (field.isNull()) return std::nullopt;
  return field.asNumber();
}

std::optional<std::string> Text(const fundamentals::SqlField& field) {
  if (field.isNull()) return std::nullopt;
  return field.asText();
}

}  // namespace

StockRows StockRows::Read(const std::filesystem::path& database) {
  fundamentals::SqlDatabase db;
  db.Open(database, false);
  StockRows rows;
  // rowid order: the order the table hands rows out without an ORDER BY, so "first" is stable.
  for (const fundamentals::SqlRow& r :
       db.Query("Select Symbol, Industry, Exchange, EPS, YearEPSEstimate, NextYearEPSEstimate "
                "from Stocks order by rowid")) {
    if (r[0].isNull()) continue;
    rows.Add(r[0].asText(), {Text(r[1]), Text(r[2]), Number(r[3]), Number(r[4]), Number(r[5])});
  }
  return rows;
}

const StockRow* StockRows::Find(const std::string& symbol) const {
  const auto it = rows_.find(symbol);
  return it == rows_.end() ? nullptr : &it->second;
}

}  // namespace halvard::screener
