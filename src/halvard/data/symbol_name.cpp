#include "halvard/data/symbol_name.h"

#include <cstdio>

#include "halvard/error.h"
#include "halvard/platform/message_text.h"

namespace halvard::data {

std::string SymbolProblem(std::string_view symbol) {
  if (symbol.empty()) return "a symbol cannot be empty";
  if (symbol == "." || symbol == "..") return "a symbol cannot be \".\" or \"..\"";
  for (const char c : symbol) {
    if (c == '/' || c == '\\') return "a symbol cannot hold \"/\" or \"\\\"";
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
      return "a symbol cannot hold a control character";
    }
  }
  return "";
}

void RequireSymbolName(std::string_view symbol) {
  if (const std::string problem = SymbolProblem(symbol); !problem.empty()) {
    throw Error(platform::QuoteForMessage(symbol) + " is not a symbol: " + problem);
  }
}

std::string AddressPart(std::string_view symbol) {
  std::string part;
  for (const char c : symbol) {
    const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                       c == '.' || c == '-' || c == '_' || c == '^';
    if (plain) {
      part += c;
      continue;
    }
    char escaped[4];
    std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned char>(c));
    part += escaped;
  }
  return part;
}

}  // namespace halvard::data
