#include "halvard/platform/text_sink.h"

namespace halvard::platform {

void PassingSink::Append(std::string_view text) {
  text_ += text;
  if (to_ == nullptr || text_.size() < pieceBytes_) return;
  const size_t end = text_.rfind('\n') + 1;  // 0 when no line has ended yet
  if (end == 0) return;
  to_->Append(std::string_view(text_).substr(0, end));
  text_.erase(0, end);
}

void PassingSink::Flush() {
  if (to_ == nullptr || text_.empty()) return;
  to_->Append(text_);
  text_.clear();
}

}  // namespace halvard::platform
