// Every JSON document of the company-data services is read here, so the JSON library is
// compiled into one file of this folder.

#include "halvard/fundamentals/company_answers.h"

#include <cctype>
#include <cmath>
#include <nlohmann/json.hpp>

#include "halvard/platform/date_text.h"

namespace halvard::fundamentals {
namespace {

using nlohmann::json;

json Parse(std::string_view body) {
  return json::parse(body.begin(), body.end(), nullptr, false);
}

// The member of an object, or nullptr (for a missing member, a null one, or no object at all).
const json* Member(const json* object, const char* key) {
  if (object == nullptr || !object->is_object()) return nullptr;
  const auto it = object->find(key);
  return it == object->end() || it->is_null() ? nullptr : &*it;
}

std::string Text(const json* value) {
  return value != nullptr && value->is_string() ? value->get<std::string>() : "";
}

// A finite number, given plainly or as the services' {"raw": 6.13, "fmt": "6.13"}.
std::optional<double> Figure(const json* value) {
  if (value != nullptr && value->is_object()) value = Member(value, "raw");
  if (value == nullptr || !value->is_number()) return std::nullopt;
  const double number = value->get<double>();
  return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

std::string TenDigits(const json& cik) {
  std::string digits;
  if (cik.is_number_unsigned() || cik.is_number_integer()) {
    digits = std::to_string(cik.get<long long>());
  } else if (cik.is_string()) {
    digits = cik.get<std::string>();
  }
  if (digits.empty() || digits.size() > 10) return "";
  for (const char c : digits) {
    if (!std::isdigit(static_cast<unsigned char>(c))) return "";
  }
  return std::string(10 - digits.size(), '0') + digits;
}

// The days from start to end of a reported period, when both are dates.
std::optional<double> PeriodDays(const json& fact) {
  const auto start = platform::ParseDate(Text(Member(&fact, "start")));
  const auto end = platform::ParseDate(Text(Member(&fact, "end")));
  if (!start || !end) return std::nullopt;
  return *end - *start;
}

}  // namespace

std::string EdgarTicker(std::string_view symbol) {
  std::string ticker;
  for (const char c : symbol) {
    ticker += c == '.' ? '-' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return ticker;
}

std::optional<std::map<std::string, EdgarCompany>> ReadEdgarTickers(std::string_view body) {
  const json doc = Parse(body);
  const json* fields = Member(&doc, "fields");
  const json* data = Member(&doc, "data");
  if (fields == nullptr || !fields->is_array() || data == nullptr || !data->is_array()) {
    return std::nullopt;
  }
  const auto column = [&](const char* name) -> std::optional<size_t> {
    for (size_t i = 0; i < fields->size(); ++i) {
      if ((*fields)[i] == name) return i;
    }
    return std::nullopt;
  };
  const auto cik = column("cik"), name = column("name"), ticker = column("ticker"),
             exchange = column("exchange");
  if (!cik || !ticker) return std::nullopt;
  std::map<std::string, EdgarCompany> companies;
  for (const json& row : *data) {
    if (!row.is_array()) continue;
    const auto at = [&](const std::optional<size_t>& c) -> const json* {
      return c && *c < row.size() ? &row[*c] : nullptr;
    };
    const std::string digits = at(cik) != nullptr ? TenDigits(*at(cik)) : "";
    const std::string symbol = Text(at(ticker));
    if (digits.empty() || symbol.empty()) continue;
    companies.emplace(EdgarTicker(symbol),
                      EdgarCompany{digits, Text(at(name)), Text(at(exchange))});
  }
  return companies;
}

std::optional<CompanyFacts> ReadEdgarSubmissions(std::string_view body, std::string_view ticker) {
  const json doc = Parse(body);
  if (!doc.is_object() || Member(&doc, "cik") == nullptr) return std::nullopt;
  CompanyFacts facts;
  facts.name = Text(Member(&doc, "name"));
  facts.industry = Text(Member(&doc, "sicDescription"));
  const json* tickers = Member(&doc, "tickers");
  const json* exchanges = Member(&doc, "exchanges");
  if (tickers != nullptr && tickers->is_array() && exchanges != nullptr && exchanges->is_array()) {
    for (size_t i = 0; i < tickers->size() && i < exchanges->size(); ++i) {
      if (EdgarTicker(Text(&(*tickers)[i])) == EdgarTicker(ticker)) {
        facts.exchange = Text(&(*exchanges)[i]);
        break;
      }
    }
  }
  return facts;
}

std::optional<std::optional<double>> ReadEdgarAnnualEps(std::string_view body) {
  const json doc = Parse(body);
  if (!doc.is_object() || Member(&doc, "facts") == nullptr) return std::nullopt;
  const json* units =
      Member(Member(Member(Member(&doc, "facts"), "us-gaap"), "EarningsPerShareDiluted"), "units");
  const json* perShare = Member(units, "USD/shares");
  std::optional<double> eps;
  std::string latestEnd, latestFiled;
  if (perShare == nullptr || !perShare->is_array()) return eps;
  for (const json& fact : *perShare) {
    const std::string form = Text(Member(&fact, "form"));
    if (form != "10-K" && form != "10-K/A") continue;
    // A yearly report also repeats quarters; a fiscal year is 52 or 53 weeks.
    const auto days = PeriodDays(fact);
    if (!days || *days < 350 || *days > 380) continue;
    const auto value = Figure(Member(&fact, "val"));
    if (!value) continue;
    const std::string end = Text(Member(&fact, "end"));
    const std::string filed = Text(Member(&fact, "filed"));
    // ISO dates compare as text.
    if (!eps || end > latestEnd || (end == latestEnd && filed > latestFiled)) {
      eps = value;
      latestEnd = end;
      latestFiled = filed;
    }
  }
  return eps;
}

std::optional<CompanyFacts> ReadQuoteSummary(std::string_view body) {
  const json doc = Parse(body);
  const json* results = Member(Member(&doc, "quoteSummary"), "result");
  if (results == nullptr || !results->is_array() || results->empty()) return std::nullopt;
  const json* result = &results->front();
  if (!result->is_object()) return std::nullopt;
  CompanyFacts facts;
  const json* price = Member(result, "price");
  facts.name = Text(Member(price, "longName"));
  if (facts.name.empty()) facts.name = Text(Member(price, "shortName"));
  facts.exchange = Text(Member(price, "exchangeName"));
  const json* profile = Member(result, "assetProfile");
  facts.industry = Text(Member(profile, "industry"));
  facts.description = Text(Member(profile, "longBusinessSummary"));
  facts.eps = Figure(Member(Member(result, "defaultKeyStatistics"), "trailingEps"));
  if (const json* trend = Member(Member(result, "earningsTrend"), "trend");
      trend != nullptr && trend->is_array()) {
    for (const json& period : *trend) {
      const std::string which = Text(Member(&period, "period"));
      const auto mean = Figure(Member(Member(&period, "earningsEstimate"), "avg"));
      if (which == "0y") facts.yearEstimate = mean;
      if (which == "+1y") facts.nextYearEstimate = mean;
    }
  }
  return facts;
}

}  // namespace halvard::fundamentals
