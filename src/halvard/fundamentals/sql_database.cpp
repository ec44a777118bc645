#include "halvard/fundamentals/sql_database.h"

#include <sqlite3.h>
#include <unistd.h>

#include "halvard/error.h"
#include "halvard/platform/number_text.h"

namespace halvard::fundamentals {
namespace {

// Leaves a cached statement ready for its next use however the current one ends: reset (which
// also ends its read of the file) and its parameters cleared.
struct ResetAfterUse {
  sqlite3_stmt* statement;
  ~ResetAfterUse() {
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
  }
};

// A database in a folder nobody may write to cannot get the shared-memory file its log needs;
// there nobody can change it either, so it is opened as unchanging.
std::string ReadOnlyUri(const std::filesystem::path& path) {
  std::string uri = "file:";
  for (const char c : std::filesystem::absolute(path).string()) {
    if (c == '%' || c == '?' || c == '#') {
      static constexpr char kHex[] = "0123456789abcdef";
      uri += '%';
      uri += kHex[(c >> 4) & 0xf];
      uri += kHex[c & 0xf];
    } else {
      uri += c;
    }
  }
  const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
  if (::access(folder.c_str(), W_OK) != 0) uri += "?immutable=1";
  return uri;
}

SqlField ReadField(sqlite3_stmt* statement, int c) {
  SqlField field{sqlite3_column_name(statement, c), {}, {}};
  switch (sqlite3_column_type(statement, c)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      field.number = sqlite3_column_double(statement, c);
      break;
    case SQLITE_TEXT:
    case SQLITE_BLOB:
      field.text = std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, c)),
                               static_cast<size_t>(sqlite3_column_bytes(statement, c)));
      break;
    default:
      break;  // Null
  }
  return field;
}

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

void SqlDatabase::Finalize::operator()(sqlite3_stmt* s) const {
  sqlite3_finalize(s);
}

void SqlDatabase::Open(const std::filesystem::path& path, bool createIfMissing, bool readOnly) {
  Close();
  path_ = path;
  const int flags = readOnly ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI
                             : SQLITE_OPEN_READWRITE | (createIfMissing ? SQLITE_OPEN_CREATE : 0);
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(readOnly ? ReadOnlyUri(path).c_str() : path.string().c_str(), &db,
                                 flags, nullptr);
  if (rc != SQLITE_OK) {
    const std::string why = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
    sqlite3_close(db);
    throw Error(path.string() + ": cannot open the database: " + why);
  }
  // Another program (a second window, a backup) may hold the file for a moment.
  sqlite3_busy_timeout(db, 5000);
  db_ = db;
  if (readOnly) return;
  // Every statement is its own transaction, one per stock and more in a rank run: with the
  // write-ahead log a commit costs no wait for the disk, and a crash still loses no committed
  // row. A file that is not a database fails here or at its first statement, as it should.
  sqlite3_exec(db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr, nullptr,
               nullptr);
}

void SqlDatabase::OpenInMemory(const std::filesystem::path& path) {
  Close();
  path_ = path;
  sqlite3* db = nullptr;
  if (sqlite3_open(":memory:", &db) != SQLITE_OK) {
    sqlite3_close(db);
    throw Error(path.string() + ": cannot open an empty database in memory");
  }
  db_ = db;
}

void SqlDatabase::Close() {
  statements_.clear();  // every statement is finalized before its connection closes
  if (db_) sqlite3_close_v2(db_);
  db_ = nullptr;
}

void SqlDatabase::Fail(const std::string& what, const std::string& sql) const {
  throw Error(path_.string() + ": " + what + " in the statement: " + sql);
}

sqlite3_stmt* SqlDatabase::Prepared(const std::string& sql) {
  if (!db_) Fail("the database is not open", sql);
  if (const auto it = statements_.find(sql); it != statements_.end()) return it->second.get();
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v3(db_, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr) !=
      SQLITE_OK) {
    Fail(sqlite3_errmsg(db_), sql);
  }
  if (!raw) Fail("no statement", sql);  // only blanks or a comment
  statements_.emplace(sql, Statement(raw));
  return raw;
}

void SqlDatabase::Bind(sqlite3_stmt* statement, const SqlValues& values, const std::string& sql) {
  if (sqlite3_bind_parameter_count(statement) != static_cast<int>(values.size())) {
    Fail("the number of values does not match the parameters", sql);
  }
  for (size_t i = 0; i < values.size(); ++i) {
    const int at = static_cast<int>(i) + 1;
    const int rc = std::visit(
        [&](const auto& v) {
          using T = std::decay_t<decltype(v)>;
          if constexpr (std::is_same_v<T, double>)
            return sqlite3_bind_double(statement, at, v);
          else if constexpr (std::is_same_v<T, int64_t>)
            return sqlite3_bind_int64(statement, at, v);
          else if constexpr (std::is_same_v<T, std::monostate>)
            return sqlite3_bind_null(statement, at);
          else
            return sqlite3_bind_text(statement, at, v.data(), static_cast<int>(v.size()),
                                     SQLITE_TRANSIENT);
        },
        values[i]);
    if (rc != SQLITE_OK) Fail(sqlite3_errmsg(db_), sql);
  }
}

int SqlDatabase::Execute(const std::string& sql, const SqlValues& values) {
  Query(sql, values);
  return sqlite3_changes(db_);
}

std::vector<SqlRow> SqlDatabase::Query(const std::string& sql, const SqlValues& values) {
  sqlite3_stmt* statement = Prepared(sql);
  const ResetAfterUse reset{statement};
  Bind(statement, values, sql);
  std::vector<SqlRow> rows;
  for (;;) {
    const int rc = sqlite3_step(statement);
    if (rc == SQLITE_DONE) break;
    if (rc != SQLITE_ROW) Fail(sqlite3_errmsg(db_), sql);
    SqlRow& row = rows.emplace_back();
    const int columns = sqlite3_column_count(statement);
    for (int c = 0; c < columns; ++c) row.push_back(ReadField(statement, c));
  }
  return rows;
}

}  // namespace halvard::fundamentals
