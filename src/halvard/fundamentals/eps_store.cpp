#include "halvard/fundamentals/eps_store.h"

#include <algorithm>
#include <array>

#include "halvard/data/symbol_name.h"
#include "halvard/error.h"
#include "halvard/fundamentals/quoted_text.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/number_text.h"

namespace halvard::fundamentals {
namespace {

// The key of a stored line: its first field without the service's double quotes, so that a
// line read back matches the bare symbol a later download of the same stock is keyed by.
std::string KeyOfLine(std::string_view line) {
  return ReplaceAll(std::string(line.substr(0, line.find(','))), "\"", "");
}

}  // namespace

void EPSStore::ReadEPSData(const std::filesystem::path& path) {
  path_ = path;
  records_.clear();
  const auto text = platform::ReadFileIfExists(path);
  if (!text) {
    platform::WriteFileAtomically(path, "");
    return;
  }
  platform::LineReader lines(*text);
  std::string_view line;
  while (lines.Next(line)) {
    if (line.empty()) continue;
    // A stock downloaded twice by an older version may have two lines; the later one is the
    // newer download.
    const std::string key = KeyOfLine(line);
    Remove(key);
    records_.push_back({key, std::string(line)});
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
  const auto r = std::find_if(records_.begin(), records_.end(),
                              [&](const Record& r) { return platform::EqualsIgnoreCase(r.key, symbol); });
  if (r == records_.end()) return;
  std::array<std::string_view, 3> fields;
  const bool hasSecond = platform::SplitFields(r->line, fields) >= 2;
  const auto value = hasSecond ? platform::ParseDouble(fields[1]) : std::nullopt;
  if (!value) {
    throw Error(path_.string() + ": the EPS of " + symbol + " is not a number: " + r->line);
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
