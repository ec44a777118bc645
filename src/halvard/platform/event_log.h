#pragma once
// The application event log: what the downloads report for whoever looks later (an answer that
// was not price data, a symbol that failed, a list started and done). Entries go to a file, one
// a line: "YYYY-MM-DD HH:MM:SS<TAB>Information|Error<TAB>text", local time, CR LF.

#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace halvard::platform {

enum class EventType { kInformation, kError };

class EventLog {
 public:
  virtual ~EventLog() = default;
  virtual void Write(EventType type, std::string_view text) = 0;
};

// Appends to a file (by default DefaultEventLogFile()), creating its folder on first use. A log
// that cannot be written is not worth stopping a download for: the entry is then lost.
class FileEventLog : public EventLog {
 public:
  FileEventLog();
  explicit FileEventLog(std::filesystem::path file);
  void Write(EventType type, std::string_view text) override;
  const std::filesystem::path& file() const { return file_; }

 private:
  std::filesystem::path file_;
};

// Keeps the entries in memory, for tests and for callers that show them.
class MemoryEventLog : public EventLog {
 public:
  struct Entry {
    EventType type;
    std::string text;
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  void Write(EventType type, std::string_view text) override {
    entries_.push_back({type, std::string(text)});
  }
  const std::vector<Entry>& entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

// One line of the log file, without its line end. Line breaks inside the text (a logged answer
// body has many) are written as the two characters "\n" so every entry stays on one line.
std::string FormatEventLogLine(const std::tm& localTime, EventType type, std::string_view text);

}  // namespace halvard::platform
