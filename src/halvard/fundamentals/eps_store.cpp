#include "halvard/fundamentals/eps_store.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "halvard/data/symbol_name.h"
#include "halvard/error.h"
#include "halvard/fundamentals/quoted_text.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::fundamentals {
namespace {

// The key of a stored line: its first field without the service's double quotes, so that a
// line read back matches the bare symbol a later download of the same stock is keyed by.
std::string KeyOfLine(std::string_view line) {
  return ReplaceAll(std::string(line.substr(0, line.find(','))), "\"", "");
}

// Keys match without regard to ASCII case, as EqualsIgnoreCase compares them.
std::string FoldCase(std::string key) {
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return key;
}

}  // namespace

void EPSStore::ReadEPSData(const std::filesystem::path& path) {
  const auto text = platform::ReadFileIfExists(path);
  if (!text) {
    path_ = path;
    records_.clear();
    platform::WriteFileAtomically(path, "");
    return;
  }
  ParseEPSData(*text, path);
}

void EPSStore::ParseEPSData(std::string_view text, const std::filesystem::path& path) {
  path_ = path;
  records_.clear();
  // A stock downloaded twice by an older version may have two lines; the later one is the newer
  // download and keeps its place. The last line of each key is found first, so the read takes
  // time in proportion to the lines, however many stocks the file holds.
  std::vector<std::string_view> lines;
  std::unordered_map<std::string, size_t> lastLineOfKey;
  platform::LineReader reader(text);
  for (std::string_view line; reader.Next(line);) {
    if (line.empty()) continue;
    lastLineOfKey[FoldCase(KeyOfLine(line))] = lines.size();
    lines.push_back(line);
  }
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string key = KeyOfLine(lines[i]);
    if (lastLineOfKey.at(FoldCase(key)) != i) continue;
    records_.push_back({std::move(key), std::string(lines[i])});
  }
}

void EPSStore::WriteEPSData() const {
  std::string text;
  for (const Record& r : records_) text += r.line + "\r\n";
  platform::WriteFileAtomically(path_, text);
}

void EPSStore::SetEPS(const std::string& symbol, double eps) {
  Remove(symbol);
  records_.push_back({symbol, symbol + "," + platform::FormatGeneral(eps)});
}

void EPSStore::GetEPS(const std::string& symbol, double& eps) const {
  const auto r = std::find_if(records_.begin(), records_.end(), [&](const Record& r) {
    return platform::EqualsIgnoreCase(r.key, symbol);
  });
  if (r == records_.end()) return;
  std::array<std::string_view, 3> fields;
  const bool hasSecond = platform::SplitFields(r->line, fields) >= 2;
  const auto value = hasSecond ? platform::ParseDouble(fields[1]) : std::nullopt;
  if (!value) {
    throw Error(path_.string() + ": the EPS of " + platform::QuoteForMessage(symbol) +
                " is not a number: " + platform::QuoteForMessage(r->line));
  }
  eps = *value;
}

bool EPSStore::CheckExists(const std::string& key) const {
  return std::any_of(records_.begin(), records_.end(),
                     [&](const Record& r) { return platform::EqualsIgnoreCase(r.key, key); });
}

std::optional<std::string> FetchQuotesEPSLine(platform::HttpClient& http,
                                              const std::string& quotesHost,
                                              const std::string& symbol) {
  const auto body = FetchServiceBody(&http, quotesHost,
                                     "/d/quotes.csv?s=" + data::AddressPart(symbol) + "&f=see7e8");
  if (!body) return std::nullopt;
  // The first line as the service sent it, with any CR it left at its end.
  return body->substr(0, body->find('\n'));
}

void EPSStore::downloadEPS(platform::HttpClient& http, const std::string& quotesHost,
                           const std::string& symbol, bool& success) {
  success = false;
  auto line = FetchQuotesEPSLine(http, quotesHost, symbol);
  if (!line) return;
  SetLine(symbol, std::move(*line));
  success = true;
}

void EPSStore::SetLine(const std::string& symbol, std::string line) {
  Remove(symbol);
  records_.push_back({symbol, std::move(line)});
}

void EPSStore::Remove(const std::string& key) {
  std::erase_if(records_, [&](const Record& r) { return platform::EqualsIgnoreCase(r.key, key); });
}

}  // namespace halvard::fundamentals
