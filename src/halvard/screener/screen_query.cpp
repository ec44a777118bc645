#include "halvard/screener/screen_query.h"

#include <array>
#include <cctype>

#include "halvard/platform/line_reader.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"
#include "halvard/screener/criteria_table.h"

namespace halvard::screener {
namespace {

std::string End(const std::optional<double>& end) {
  return end ? platform::FormatGeneral(*end) : "";
}

// The first field of a CSV line, without its quotes and surrounding spaces.
std::string FirstField(std::string_view line) {
  std::array<std::string_view, 1> field;
  platform::SplitFields(line, field);
  std::string text;
  for (const char ch : field[0]) {
    if (ch != '"') text += ch;
  }
  return std::string(platform::TrimSpaces(text));
}

}  // namespace

std::string EscapeQueryText(std::string_view text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (const char ch : text) {
    const auto byte = static_cast<unsigned char>(ch);
    if (std::isalnum(byte) || ch == '-' || ch == '.' || ch == '_' || ch == '~') {
      out += ch;
    } else {
      out += '%';
      out += kHex[byte >> 4];
      out += kHex[byte & 15];
    }
  }
  return out;
}

std::string ScreenQuery(const ScreenCriteria& c, int page) {
  std::string query(kScreenPath);
  query += '?';
  for (const TextCriterion& t : TextCriteria()) {
    const std::string& text = c.*t.field;
    if (!IsSet(text)) continue;
    query += std::string(t.key) + "=" + EscapeQueryText(platform::TrimSpaces(text)) + "&";
  }
  for (const RangeCriterion& r : RangeCriteria()) {
    const Bounds& b = c.*r.field;
    if (!b.isSet()) continue;
    query += std::string(r.key) + "=" + End(b.min) + ".." + End(b.max) + "&";
  }
  return query + "page=" + std::to_string(page);
}

std::optional<std::vector<std::string>> ParseScreenAnswer(std::string_view body) {
  platform::LineReader reader(body);
  std::string_view line;
  while (reader.Next(line) && platform::TrimSpaces(line).empty()) {
  }
  if (!platform::EqualsIgnoreCase(FirstField(line), "Symbol")) return std::nullopt;
  std::vector<std::string> symbols;
  while (reader.Next(line)) {
    std::string symbol = FirstField(line);
    if (!symbol.empty()) symbols.push_back(std::move(symbol));
  }
  return symbols;
}

}  // namespace halvard::screener
