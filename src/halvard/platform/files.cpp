#include "halvard/platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include "halvard/error.h"
#include "halvard/platform/text.h"

namespace halvard::platform {
namespace fs = std::filesystem;

namespace {

// Closes a POSIX descriptor when the scope ends.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }
  int release() {
    const int fd = fd_;
    fd_ = -1;
    return fd;
  }

 private:
  int fd_;
};

std::string Describe(const fs::path& path, const char* what, int error) {
  return path.string() + ": " + what + ": " + std::strerror(error);
}

bool WriteAll(int fd, std::string_view content) {
  while (!content.empty()) {
    const ssize_t n = ::write(fd, content.data(), content.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    content.remove_prefix(static_cast<size_t>(n));
  }
  return true;
}

std::string TooLarge(const fs::path& path) {
  return path.string() + ": the file is larger than " + std::to_string(kMaxReadBytes >> 20) + " MB";
}

// Only a regular file is read: a FIFO would wait for a writer for ever, a device such as
// /dev/zero never ends. The descriptor was opened without blocking, so neither hangs here.
std::string ReadOpenFile(const fs::path& path, const Descriptor& fd) {
  struct stat st;
  if (::fstat(fd.get(), &st) != 0) throw Error(Describe(path, "cannot read", errno));
  if (!S_ISREG(st.st_mode)) throw Error(path.string() + ": not a regular file");
  if (st.st_size > kMaxReadBytes) throw Error(TooLarge(path));
  // One byte more than the file's size, so that the read which finds the end needs no growth;
  // a file that grows while it is read grows the text up to the limit.
  std::string content;
  content.resize(static_cast<size_t>(st.st_size) + 1);
  size_t filled = 0;
  for (;;) {
    if (filled == content.size()) {
      if (content.size() > static_cast<size_t>(kMaxReadBytes)) throw Error(TooLarge(path));
      content.resize(content.size() * 2);
    }
    const ssize_t n = ::read(fd.get(), content.data() + filled, content.size() - filled);
    if (n < 0) {
      if (errno == EINTR) continue;
      throw Error(Describe(path, "cannot read", errno));
    }
    if (n == 0) break;
    filled += static_cast<size_t>(n);
  }
  content.resize(filled);
  return content;
}

int OpenForReading(const fs::path& path) {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

// A temporary file of WriteFileAtomically: "." + the target's name + "." + six letters or
// digits, the target being one of the kinds of file the program writes (so that no other
// program's dot file is ever taken for one).
bool IsOwnTemporaryName(std::string_view name) {
  if (name.size() < 12 || name.front() != '.' || name[name.size() - 7] != '.') return false;
  for (const char c : name.substr(name.size() - 6)) {
    if (!std::isalnum(static_cast<unsigned char>(c))) return false;
  }
  const std::string_view target = name.substr(1, name.size() - 8);
  for (const std::string_view kind : {".txt", ".inc", ".dat", ".ini", ".svg"}) {
    if (target.size() > kind.size() && EndsWithIgnoreCase(target, kind)) {
      return true;
    }
  }
  return false;
}

// Temporary files an interrupted write (a kill, a power cut) left behind: removed once they are
// an hour old, so that a write still under way in another process keeps its own.
void RemoveStaleTemporaries(const fs::path& folder) {
  const auto hourAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::error_code ignored;
    if (!IsOwnTemporaryName(it->path().filename().string()) || !it->is_regular_file(ignored) ||
        it->last_write_time(ignored) > hourAgo || ignored) {
      continue;
    }
    fs::remove(it->path(), ignored);
  }
}

}  // namespace

std::optional<fs::path> ResolvePath(const fs::path& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) == 0) return path;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  const std::string name = path.filename().string();
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    if (EqualsIgnoreCase(it->path().filename().string(), name)) {
      return path.has_parent_path() ? folder / it->path().filename() : it->path().filename();
    }
  }
  return std::nullopt;
}

bool FileExists(const fs::path& path) {
  return ResolvePath(path).has_value();
}

std::string ReadWholeFile(const fs::path& path) {
  Descriptor fd(OpenForReading(path));
  if (fd.get() < 0) throw Error(Describe(path, "cannot open", errno));
  return ReadOpenFile(path, fd);
}

std::optional<std::string> ReadFileAsSpelled(const fs::path& path) {
  // Opening first costs one system call for the usual case of a file that is there.
  Descriptor fd(OpenForReading(path));
  if (fd.get() >= 0) return ReadOpenFile(path, fd);
  if (errno != ENOENT) throw Error(Describe(path, "cannot open", errno));
  return std::nullopt;
}

std::optional<std::string> ReadFileIfExists(const fs::path& path) {
  if (auto text = ReadFileAsSpelled(path)) return text;
  const auto resolved = ResolvePath(path);
  if (!resolved) return std::nullopt;
  return ReadWholeFile(*resolved);
}

void WriteFileAtomically(const fs::path& path, std::string_view content, NewFileMode newFile) {
  AtomicFile file(path, newFile);
  file.Write(content);
  file.Commit();
}

AtomicFile::AtomicFile(const fs::path& path, NewFileMode newFile) : path_(path) {
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  RemoveStaleTemporaries(folder);
  std::string name = ".";  // hidden, beside the file, so the rename stays on one file system
  name += path.filename().string();
  name += ".XXXXXX";
  temp_ = (folder / name).string();
  fd_ = ::mkstemp(temp_.data());
  if (fd_ < 0) {
    const int error = errno;
    temp_.clear();
    throw Error(Describe(path, "cannot create a file in its folder", error));
  }

  // Keep the mode of the file being replaced; a new file gets the usual 0666 less the umask.
  struct stat st;
  mode_t mode = 0;
  if (::stat(path.c_str(), &st) == 0) {
    mode = st.st_mode & 07777;
  } else if (newFile == NewFileMode::kPrivate) {
    mode = 0600;
  } else {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    mode = 0666 & ~mask;
  }
  if (::fchmod(fd_, mode) != 0) Fail(errno);
}

AtomicFile::~AtomicFile() {
  if (fd_ >= 0) ::close(fd_);
  if (!temp_.empty()) ::unlink(temp_.c_str());
}

void AtomicFile::Write(std::string_view piece) {
  if (temp_.empty()) throw Error(Describe(path_, "cannot write", EBADF));  // ended already
  if (!WriteAll(fd_, piece)) Fail(errno);
}

void AtomicFile::Commit() {
  if (temp_.empty()) throw Error(Describe(path_, "cannot write", EBADF));
  const bool closed = ::fsync(fd_) == 0 && ::close(std::exchange(fd_, -1)) == 0;
  if (!closed || ::rename(temp_.c_str(), path_.c_str()) != 0) Fail(errno);
  temp_.clear();  // it is the file now
}

void AtomicFile::Fail(int error) {
  if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  ::unlink(temp_.c_str());
  temp_.clear();
  throw Error(Describe(path_, "cannot write", error));
}

bool RestrictToOwner(const fs::path& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0 || (st.st_mode & 077) == 0) return false;
  if (::chmod(path.c_str(), st.st_mode & 07700) != 0) {
    throw Error(Describe(path, "cannot make private", errno));
  }
  return true;
}

}  // namespace halvard::platform
