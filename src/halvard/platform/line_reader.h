#pragma once
// Walks the lines of a text held in memory. Lines end with CR LF, LF or CR; a final line end
// opens no further line, but an empty line anywhere else is a line.

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace halvard::platform {

class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  // The next line and its 1-based number; false at the end of the text.
  bool Next(std::string_view& line) {
    if (rest_.empty()) return false;
    // memchr for the LF, remembered between lines, keeps this linear and fast; a CR before it
    // (or a lone CR, in files from old Macs) ends the line earlier.
    if (!lfKnown_ || nextLf_ < consumed_) {
      lfKnown_ = true;
      const void* lf = std::memchr(rest_.data(), '\n', rest_.size());
      nextLf_ = lf == nullptr ? consumed_ + rest_.size()
                              : consumed_ + (static_cast<const char*>(lf) - rest_.data());
    }
    const size_t lfAt = nextLf_ - consumed_;
    const void* cr = std::memchr(rest_.data(), '\r', lfAt < rest_.size() ? lfAt : rest_.size());
    size_t end =
        cr == nullptr ? lfAt : static_cast<size_t>(static_cast<const char*>(cr) - rest_.data());
    size_t skip = 1;
    if (end >= rest_.size()) {
      end = rest_.size();
      skip = 0;
    } else if (rest_[end] == '\r' && end + 1 < rest_.size() && rest_[end + 1] == '\n') {
      skip = 2;
    }
    line = rest_.substr(0, end);
    rest_.remove_prefix(end + skip);
    consumed_ += end + skip;
    ++number_;
    return true;
  }

  size_t number() const { return number_; }

 private:
  std::string_view rest_;
  size_t consumed_ = 0;  // characters of the text before rest_
  size_t nextLf_ = 0;    // position of the next LF in the text (or its end), once known
  bool lfKnown_ = false;
  size_t number_ = 0;
};

// Splits a line at the separator, filling at most N fields; returns how many fields the line
// has, counted up to N (so a result below N means the line is short).
template <size_t N>
size_t SplitFields(std::string_view line, std::array<std::string_view, N>& fields,
                   char separator = ',') {
  size_t count = 0;
  for (;;) {
    const size_t comma = line.find(separator);
    fields[count++] = line.substr(0, comma);
    if (comma == std::string_view::npos || count == N) return count;
    line.remove_prefix(comma + 1);
  }
}

}  // namespace halvard::platform
