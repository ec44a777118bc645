#pragma once
// Where reports and logs go: a pane of the desktop front end, the standard output of the command
// line, or a string in a test.

#include <string>
#include <string_view>

namespace halvard::platform {

class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void Append(std::string_view text) = 0;
};

// Keeps everything appended, as a pane does.
class StringSink : public TextSink {
 public:
  void Append(std::string_view text) override { text_ += text; }
  const std::string& text() const { return text_; }
  void Clear() { text_.clear(); }

 private:
  std::string text_;
};

}  // namespace halvard::platform
