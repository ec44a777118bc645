#pragma once
// SqlDatabase: one SQLite connection and the few things the stock database asks of it: run a
// statement and learn how many rows it changed, run a query and read its rows. Statement texts
// are constants; every value from a file, a service or the user travels as a bound parameter, so
// no name can ever change what a statement does. Each text is prepared once per connection and
// reused. Query results are read whole before the caller walks them, so a caller may update the
// table while it walks.

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace halvard::fundamentals {

// One field of a result row; nullopt is Null. Numbers are read as doubles, text as text.
struct SqlField {
  std::string name;
  std::optional<double> number;
  std::optional<std::string> text;
  bool isNull() const { return !number && !text; }
  // The value as a number (text that reads as one converts; Null and other text give 0).
  double asNumber() const;
  std::string asText() const;
};
using SqlRow = std::vector<SqlField>;

// A value bound to one "?" of a statement, in order; std::monostate binds Null.
using SqlValue = std::variant<double, int64_t, std::string, std::monostate>;
using SqlValues = std::vector<SqlValue>;

class SqlDatabase {
 public:
  SqlDatabase() = default;
  SqlDatabase(const SqlDatabase&) = delete;
  SqlDatabase& operator=(const SqlDatabase&) = delete;
  ~SqlDatabase() { Close(); }

  // Opens an existing file, or creates it when createIfMissing; readOnly opens it for reading
  // only (a folder the user may not write to can still be browsed). A failure is a
  // halvard::Error.
  void Open(const std::filesystem::path& path, bool createIfMissing, bool readOnly = false);
  // An empty database held in memory, standing in for a file that does not exist yet; the path
  // names it in messages.
  void OpenInMemory(const std::filesystem::path& path);
  void Close();
  bool isOpen() const { return db_ != nullptr; }
  const std::filesystem::path& path() const { return path_; }

  // Runs one statement with its parameters; returns the number of rows it inserted, updated or
  // deleted. An engine error (or no open connection) is a halvard::Error with the engine's
  // message and the statement text.
  int Execute(const std::string& sql, const SqlValues& values = {});
  std::vector<SqlRow> Query(const std::string& sql, const SqlValues& values = {});

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* s) const;
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

  sqlite3_stmt* Prepared(const std::string& sql);
  void Bind(sqlite3_stmt* statement, const SqlValues& values, const std::string& sql);
  [[noreturn]] void Fail(const std::string& what, const std::string& sql) const;

  sqlite3* db_ = nullptr;
  std::filesystem::path path_;
  std::map<std::string, Statement, std::less<>> statements_;
};

}  // namespace halvard::fundamentals
