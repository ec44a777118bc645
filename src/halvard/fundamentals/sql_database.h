#pragma once
// SqlDatabase: one SQLite connection and the few things the stock database asks of it: run a
// statement and learn how many rows it changed, run a query and read its rows. Query results
// are read whole before the caller walks them, so a caller may update the table while it walks.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

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

class SqlDatabase {
 public:
  SqlDatabase() = default;
  SqlDatabase(const SqlDatabase&) = delete;
  SqlDatabase& operator=(const SqlDatabase&) = delete;
  ~SqlDatabase() { Close(); }

  // Opens an existing file, or creates it when createIfMissing. A failure is a halvard::Error.
  void Open(const std::filesystem::path& path, bool createIfMissing);
  void Close();
  bool isOpen() const { return db_ != nullptr; }
  const std::filesystem::path& path() const { return path_; }

  // Runs one statement; returns the number of rows it inserted, updated or deleted. An engine
  // error (or no open connection) is a halvard::Error with the engine's message and the text.
  int Execute(const std::string& sql);
  std::vector<SqlRow> Query(const std::string& sql);

 private:
  [[noreturn]] void Fail(const std::string& what, const std::string& sql) const;

  sqlite3* db_ = nullptr;
  std::filesystem::path path_;
};

}  // namespace halvard::fundamentals
