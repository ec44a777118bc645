#pragma once
// BooleanDB: the saved combinations of watch lists, booldb.dat in the watch-list folder, one
// record a line: first list, operation, second list and result name joined by ":" (for example
// tech.inc:union:growth.inc:combined.inc). A current position walks the records as the window
// browses them.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace halvard::tools {

inline constexpr std::string_view kBooleanDBFileName = "booldb.dat";

struct SetOpRecord {
  std::string firstList, operation, secondList, result;
};

class BooleanDB {
 public:
  // Remembers the path and reads every line as a record; position 0. A missing file is
  // created empty, unless createIfMissing is false (a command that only looks, which must work
  // in a folder the user may not write to): then there are no records.
  void ReadFile(const std::filesystem::path& path, bool createIfMissing = true);
  // The same read of the file's text held in memory, as if read from path.
  void ReadText(std::string_view text, const std::filesystem::path& path);
  // Rewrites the remembered file (atomically), one record a line, CR LF.
  void WriteFile() const;

  // Removes the record at the position, when there is one; the position stays.
  void DeleteCurr();
  // One back; nothing stops it below the first record (nothing is on view there).
  void MoveBack() { --position_; }
  // One on, unless that is past the last record.
  void MoveNext();
  // Appends first:operation:second:result (note the order). A name holding ":" could not be
  // read back and is a halvard::UsageError.
  void AddRecord(const std::string& first, const std::string& second, const std::string& operation,
                 const std::string& result);

  // The record on view, when the position holds one; the outputs stay as they were otherwise.
  // A stored line with fewer than four fields is a halvard::Error naming the file and line.
  bool getCurrent(std::string& first, std::string& second, std::string& operation,
                  std::string& result) const;

  int position() const { return position_; }
  void setPosition(int position) { position_ = position; }
  int count() const { return static_cast<int>(records_.size()); }
  const std::vector<std::string>& records() const { return records_; }

  // The window's two status panels: the record on view, or the invitation to add one; the
  // count of records in the file, or the empty-file text only when the file holds none.
  std::string StatusRecordText() const;
  std::string StatusCountText() const;

 private:
  bool OnView() const { return position_ >= 0 && position_ < count(); }

  std::filesystem::path path_;
  std::vector<std::string> records_;
  int position_ = 0;
};

// Runs one combination in the watch-list folder: first and second list read, the operation
// ("union", "intersect", "difference", in any case, as the window's drop-down chooses it; any
// other text combines nothing) applied, the first
// list's set saved under the result name as it stands (no extension added). Nothing is done
// when the result name is empty. Returns the number of symbols written.
size_t RunCurr(const std::filesystem::path& listFolder, const SetOpRecord& record);

// Every record, first to last, as "Run All" does. Returns the records run.
int RunAll(const std::filesystem::path& listFolder, BooleanDB& db);

}  // namespace halvard::tools
