#include "halvard/platform/text_sink.h"

namespace halvard::platform {

void PassingSink::PassOn(TextSink& to) {
  to_ = &to;
  text_.reserve(pieceBytes_);
}

void PassingSink::Append(std::string_view text) {
  if (to_ != nullptr && text_.size() + text.size() > pieceBytes_) {
    const size_t end = text_.rfind('\n') + 1;  // 0 when no line has ended yet
    if (end > 0) {
      to_->Append(std::string_view(text_).substr(0, end));
      text_.erase(0, end);
    }
  }
  text_ += text;
}

void PassingSink::Flush() {
  if (to_ == nullptr || text_.empty()) return;
  to_->Append(text_);
  text_.clear();
}

}  // namespace halvard::platform
