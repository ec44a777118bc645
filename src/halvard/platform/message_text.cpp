#include "halvard/platform/message_text.h"

namespace halvard::platform {

std::string QuoteForMessage(std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : text.substr(0, kQuotedChars)) {
    const auto byte = static_cast<unsigned char>(c);
    switch (c) {
      case '\r':
        quoted += "\\r";
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\t':
        quoted += "\\t";
        break;
      default:
        if (byte < 0x20 || byte == 0x7f) {
          quoted += "\\x";
          quoted += kHex[byte >> 4];
          quoted += kHex[byte & 0xf];
        } else {
          quoted += c;
        }
    }
  }
  quoted += '"';
  if (text.size() > kQuotedChars) {
    quoted += "... (" + std::to_string(text.size()) + " bytes in all)";
  }
  return quoted;
}

}  // namespace halvard::platform
