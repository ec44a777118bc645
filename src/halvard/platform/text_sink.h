#pragma once
// Where reports and logs go: a pane of the desktop front end, the standard output of the command
// line, or a string in a test.

#include <cstddef>
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

// Keeps everything appended, as StringSink does, until PassOn names a sink to hand it to: from
// then on it holds only the piece it is filling and hands the piece's whole lines on before it
// would pass pieceBytes, so that a report of hundreds of megabytes is printed and saved as it is
// made instead of being held whole. The piece's memory is reused, so a run touches no more than
// it. A line is never cut, so a CR LF always arrives in one piece.
class PassingSink : public TextSink {
 public:
  explicit PassingSink(size_t pieceBytes = size_t{64} << 10) : pieceBytes_(pieceBytes) {}
  void Append(std::string_view text) override;
  // Everything appended; while passing on, only what has not been handed on yet.
  const std::string& text() const { return text_; }
  // Hands on what is held with the next piece, then every later one.
  void PassOn(TextSink& to);
  // Hands on everything held, a last line without its line end too.
  void Flush();

 private:
  std::string text_;
  TextSink* to_ = nullptr;
  size_t pieceBytes_;
};

}  // namespace halvard::platform
