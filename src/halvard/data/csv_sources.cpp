// The two CSV services: a header naming the columns, one day a line, oldest first. Both are read
// by column name, so a column added or moved by the service does not shift the prices.

#include <algorithm>
#include <functional>
#include <optional>

#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"
#include "halvard/data/symbol_name.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::data {
namespace {

std::vector<std::string_view> SplitCommas(std::string_view line) {
  std::vector<std::string_view> fields;
  size_t start = 0;
  for (size_t comma; (comma = line.find(',', start)) != std::string_view::npos; start = comma + 1) {
    fields.push_back(platform::TrimSpaces(line.substr(start, comma - start)));
  }
  fields.push_back(platform::TrimSpaces(line.substr(start)));
  return fields;
}

std::optional<size_t> ColumnOf(const std::vector<std::string_view>& header, std::string_view name) {
  for (size_t i = 0; i < header.size(); ++i) {
    if (platform::EqualsIgnoreCase(header[i], name)) return i;
  }
  return std::nullopt;
}

// Reads a CSV with named columns into the stored body. Volume may be missing (indexes on some
// services) and reads as 0; the adjusted close may be missing and is then the close. A day with
// an empty or non-numeric value is dropped.
FetchResult ConvertNamedCsv(const std::string& body, std::string_view adjustedName) {
  platform::LineReader reader(body);
  std::string_view line;
  if (!reader.Next(line)) return {"", WrongShape("empty", body)};
  const std::vector<std::string_view> header = SplitCommas(line);
  std::optional<size_t> at[7];
  const char* const names[] = {"date", "open", "high", "low", "close", "volume"};
  for (int i = 0; i < 6; ++i) at[i] = ColumnOf(header, names[i]);
  at[6] = ColumnOf(header, adjustedName);
  if (!at[0] || !at[1] || !at[2] || !at[3] || !at[4]) {
    return {"", WrongShape("no date, open, high, low and close columns", body)};
  }
  std::vector<DayRow> rows;
  while (reader.Next(line)) {
    if (platform::TrimSpaces(line).empty()) continue;
    const std::vector<std::string_view> fields = SplitCommas(line);
    const auto field = [&](const std::optional<size_t>& column, std::string_view otherwise) {
      return column && *column < fields.size() ? fields[*column] : otherwise;
    };
    const std::optional<double> date = platform::ParseDate(field(at[0], ""));
    std::string_view values[6];
    bool complete = date.has_value();
    for (int i = 1; i <= 6 && complete; ++i) {
      values[i - 1] = field(at[i], i == 5 ? "0" : field(at[4], ""));
      complete = platform::ParseDouble(values[i - 1]).has_value();
    }
    if (!complete) continue;
    rows.push_back({*date, std::string(values[0]), std::string(values[1]), std::string(values[2]),
                    std::string(values[3]), std::string(values[4]), std::string(values[5])});
  }
  return {StoredBody(std::move(rows)), ""};
}

std::string CompactDate(double serial) {
  std::string iso = IsoDate(serial);
  std::erase(iso, '-');
  return iso;
}

class CsvSource : public PriceSource {
 public:
  using Address = std::function<std::string(const std::string&, double, double)>;
  // A service's own refusals, named before the general ones: empty when it is none of them.
  using OwnRefusal = std::function<std::string(const platform::HttpResponse&)>;
  CsvSource(Address address, std::string adjustedName, std::unique_ptr<platform::HttpClient> client,
            OwnRefusal ownRefusal = {})
      : address_(std::move(address)),
        adjustedName_(std::move(adjustedName)),
        client_(std::move(client)),
        ownRefusal_(std::move(ownRefusal)) {}

  FetchResult Fetch(const std::string& symbol, double startDate, double endDate) override {
    const platform::HttpResponse response = client_->Get(address_(symbol, startDate, endDate));
    if (ownRefusal_ && response.answered()) {
      if (std::string refusal = ownRefusal_(response); !refusal.empty()) {
        return Refused(response, std::move(refusal));
      }
    }
    if (std::string refusal = RefusalOf(response); !refusal.empty()) {
      return Refused(response, std::move(refusal));
    }
    return ConvertNamedCsv(response.body, adjustedName_);
  }

 private:
  Address address_;
  std::string adjustedName_;
  std::unique_ptr<platform::HttpClient> client_;
  OwnRefusal ownRefusal_;
};

// Since 2026 stooq answers a client without a valid key with an HTML page (status 200) that
// makes a browser solve a proof-of-work puzzle, and a key past its daily quota with a line of
// text; neither is price data, and the user can only act on the first by setting a key.
std::string StooqRefusal(const platform::HttpResponse& response) {
  if (response.body.find("Exceeded the daily hits limit") != std::string::npos) {
    return "the stooq service says the key's daily limit is used up (\"Exceeded the daily hits "
           "limit\")";
  }
  if (IsHtml(response.body)) {
    return "the stooq service asked for a browser check: set [Services] Stooq Key";
  }
  return "";
}

}  // namespace

std::string StooqTicker(const std::string& symbol) {
  static const std::pair<const char*, const char*> kIndexes[] = {
      {"^IXIC", "^ndq"}, {"^GSPC", "^spx"}, {"^DJI", "^dji"}, {"^NDX", "^ndx"}};
  for (const auto& [ours, theirs] : kIndexes) {
    if (platform::EqualsIgnoreCase(symbol, ours)) return theirs;
  }
  const std::string lower = platform::ToLowerAscii(symbol);
  if (lower.starts_with('^') || lower.find('.') != std::string::npos) return lower;
  return lower + ".us";
}

std::unique_ptr<PriceSource> MakeStooqSource(std::string host,
                                             std::unique_ptr<platform::HttpClient> client,
                                             std::string key) {
  auto address = [base = BaseUrl(host), key](const std::string& symbol, double from, double to) {
    return base + "/q/d/l/?s=" + AddressPart(StooqTicker(symbol)) + "&d1=" + CompactDate(from) +
           "&d2=" + CompactDate(to) + "&i=d" + (key.empty() ? "" : "&apikey=" + AddressPart(key));
  };
  return std::make_unique<CsvSource>(address, "Adj Close", std::move(client), StooqRefusal);
}

std::unique_ptr<PriceSource> MakeTiingoSource(std::string host, std::string token,
                                              std::unique_ptr<platform::HttpClient> client) {
  auto address = [base = BaseUrl(host), token](const std::string& symbol, double from, double to) {
    return base + "/tiingo/daily/" + AddressPart(symbol) + "/prices?startDate=" + IsoDate(from) +
           "&endDate=" + IsoDate(to) + "&format=csv&token=" + token;
  };
  return std::make_unique<CsvSource>(address, "adjClose", std::move(client));
}

}  // namespace halvard::data
