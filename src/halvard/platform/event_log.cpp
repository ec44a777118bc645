#include "halvard/platform/event_log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>

#include "halvard/platform/app_paths.h"

namespace halvard::platform {
namespace fs = std::filesystem;

FileEventLog::FileEventLog() : FileEventLog(DefaultEventLogFile()) {}

FileEventLog::FileEventLog(fs::path file) : file_(std::move(file)) {}

void FileEventLog::Write(EventType type, std::string_view text) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const std::string line = FormatEventLogLine(local, type, text) + "\r\n";
  std::error_code ec;
  if (file_.has_parent_path()) fs::create_directories(file_.parent_path(), ec);
  // One write of the whole line with O_APPEND, so two programs logging at once never mix
  // their entries.
  const int fd = ::open(file_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (fd < 0) return;
  const ssize_t written = ::write(fd, line.data(), line.size());
  (void)written;
  ::close(fd);
}

std::string FormatEventLogLine(const std::tm& localTime, EventType type, std::string_view text) {
  char stamp[64];  // room for any int the fields could hold
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d", localTime.tm_year + 1900,
                localTime.tm_mon + 1, localTime.tm_mday, localTime.tm_hour, localTime.tm_min,
                localTime.tm_sec);
  std::string line = stamp;
  line += type == EventType::kError ? "\tError\t" : "\tInformation\t";
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    if (text[i] == '\n' || text[i] == '\r') {
      line += "\\n";
    } else {
      line += text[i];
    }
  }
  return line;
}

}  // namespace halvard::platform
