#pragma once
// File helpers: existence with a case-blind fallback, whole-file reads, atomic writes.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace halvard::platform {

// The path itself when it exists; otherwise an entry of the same folder whose name matches
// without regard to ASCII case (so "^ixic.txt" finds "^IXIC.txt"); otherwise nothing.
std::optional<std::filesystem::path> ResolvePath(const std::filesystem::path& path);

// True when the path names any file or folder (through the case-blind fallback as well).
bool FileExists(const std::filesystem::path& path);

// The most any file the program reads may hold: far beyond a price history, an index of 31,001
// days or a watch list of every listed stock.
inline constexpr int64_t kMaxReadBytes = int64_t{64} << 20;

// The whole content of a file; throws halvard::Error naming the file when it cannot be read, is
// not a regular file (a FIFO, a device, a folder) or holds more than kMaxReadBytes.
std::string ReadWholeFile(const std::filesystem::path& path);

// The same, through the case-blind fallback of ResolvePath; nothing when no such file exists.
std::optional<std::string> ReadFileIfExists(const std::filesystem::path& path);

// The same under the path's own spelling only: nothing when there is no such name, without
// looking for another case (platform::FolderNames does that for a whole run).
std::optional<std::string> ReadFileAsSpelled(const std::filesystem::path& path);

// Writes the content to a temporary file in the same folder (".NAME.XXXXXX") and renames it
// over the target, so a failed write never leaves a truncated file where a good one stood; the
// temporary file is removed on every failure. Temporary files of this form that an interrupted
// write left in the folder are removed once they are an hour old. Throws halvard::Error naming
// the file on failure.
// A file that does not exist yet is created readable by all (less the umask), or with kPrivate
// by its owner alone; an existing file keeps its mode.
enum class NewFileMode { kShared, kPrivate };
void WriteFileAtomically(const std::filesystem::path& path, std::string_view content,
                         NewFileMode newFile = NewFileMode::kShared);

// The same write a piece at a time, for a file too long to hold whole first (a big sweep's
// report): the constructor makes the temporary file, Write adds to it, Commit renames it over the
// target. Dropped without Commit (a failure, a cancelled run), the temporary file is removed and
// the target stays as it was. Every step throws halvard::Error as WriteFileAtomically does.
class AtomicFile {
 public:
  explicit AtomicFile(const std::filesystem::path& path,
                      NewFileMode newFile = NewFileMode::kShared);
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  void Write(std::string_view piece);
  void Commit();

 private:
  void Fail(int error);  // removes the temporary file, then throws

  std::filesystem::path path_;
  std::string temp_;  // empty once renamed or removed
  int fd_ = -1;
};

// Takes away every right of group and others on an existing file; true when there was one to
// take. A missing file, or one already private, is left alone.
bool RestrictToOwner(const std::filesystem::path& path);

}  // namespace halvard::platform
