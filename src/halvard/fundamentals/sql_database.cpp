#include "halvard/fundamentals/sql_database.h"

#include <sqlite3.h>

#include <memory>

#include "halvard/error.h"
#include "halvard/platform/number_text.h"

namespace halvard::fundamentals {
namespace {

struct FinalizeStatement {
  void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

}  // namespace

double SqlField::asNumber() const {
  if (number) return *number;
  if (text) return platform::ParseDouble(*text).value_or(0);
  return 0;
}

std::string SqlField::asText() const {
  if (text) return *text;
  if (number) return platform::FormatGeneral(*number);
  return "";
}

void SqlDatabase::Open(const std::filesystem::path& path, bool createIfMissing) {
  Close();
  path_ = path;
  const int flags = SQLITE_OPEN_READWRITE | (createIfMissing ? SQLITE_OPEN_CREATE : 0);
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(path.string().c_str(), &db, flags, nullptr);
  if (rc != SQLITE_OK) {
    const std::string why = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
    sqlite3_close(db);
    throw Error(path.string() + ": cannot open the database: " + why);
  }
  // Another program (a second window, a backup) may hold the file for a moment.
  sqlite3_busy_timeout(db, 5000);
  db_ = db;
  // Every statement is its own transaction, one per stock and more in a rank run: with the
  // write-ahead log a commit costs no wait for the disk, and a crash still loses no committed
  // row. A file that is not a database fails here or at its first statement, as it should.
  sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr, nullptr,
               nullptr);
}

void SqlDatabase::Close() {
  if (db_) sqlite3_close_v2(db_);
  db_ = nullptr;
}

void SqlDatabase::Fail(const std::string& what, const std::string& sql) const {
  throw Error(path_.string() + ": " + what + " in the statement: " + sql);
}

int SqlDatabase::Execute(const std::string& sql) {
  Query(sql);
  return sqlite3_changes(db_);
}

std::vector<SqlRow> SqlDatabase::Query(const std::string& sql) {
  if (!db_) Fail("the database is not open", sql);
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) {
    Fail(sqlite3_errmsg(db_), sql);
  }
  const Statement statement(raw);
  std::vector<SqlRow> rows;
  if (!raw) return rows;  // only blanks or a comment
  for (;;) {
    const int rc = sqlite3_step(raw);
    if (rc == SQLITE_DONE) break;
    if (rc != SQLITE_ROW) Fail(sqlite3_errmsg(db_), sql);
    SqlRow& row = rows.emplace_back();
    const int columns = sqlite3_column_count(raw);
    for (int c = 0; c < columns; ++c) {
      SqlField field{sqlite3_column_name(raw, c), {}, {}};
      switch (sqlite3_column_type(raw, c)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
          field.number = sqlite3_column_double(raw, c);
          break;
        case SQLITE_TEXT:
        case SQLITE_BLOB:
          field.text = std::string(reinterpret_cast<const char*>(sqlite3_column_text(raw, c)),
                                   static_cast<size_t>(sqlite3_column_bytes(raw, c)));
          break;
        default:
          break;  // Null
      }
      row.push_back(std::move(field));
    }
  }
  return rows;
}

}  // namespace halvard::fundamentals
