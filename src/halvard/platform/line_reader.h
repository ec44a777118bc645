#pragma once
// Walks the lines of a text held in memory. Lines end with CR LF, LF or CR; a final line end
// opens no further line, but an empty line anywhere else is a line.

#include <array>
#include <cstddef>
#include <string_view>

namespace halvard::platform {

class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  // The next line and its 1-based number; false at the end of the text.
  bool Next(std::string_view& line) {
    if (rest_.empty()) return false;
    const size_t end = rest_.find_first_of("\r\n");
    if (end == std::string_view::npos) {
      line = rest_;
      rest_ = {};
    } else {
      line = rest_.substr(0, end);
      const size_t skip = rest_[end] == '\r' && end + 1 < rest_.size() && rest_[end + 1] == '\n';
      rest_.remove_prefix(end + 1 + skip);
    }
    ++number_;
    return true;
  }

  size_t number() const { return number_; }

 private:
  std::string_view rest_;
  size_t number_ = 0;
};

// Splits a line at ",", filling at most N fields; returns how many fields the line has, counted
// up to N (so a result below N means the line is short).
template <size_t N>
size_t SplitFields(std::string_view line, std::array<std::string_view, N>& fields) {
  size_t count = 0;
  for (;;) {
    const size_t comma = line.find(',');
    fields[count++] = line.substr(0, comma);
    if (comma == std::string_view::npos || count == N) return count;
    line.remove_prefix(comma + 1);
  }
}

}  // namespace halvard::platform
