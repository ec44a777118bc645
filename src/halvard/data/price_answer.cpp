#include "halvard/data/price_answer.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "halvard/platform/date_text.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::data {
namespace {

// The start of a body on one line, for a log entry.
std::string Quote(std::string_view body) {
  return platform::QuoteForMessage(platform::TrimStart(body, platform::kWhiteSpace));
}

std::string TextOf(const nlohmann::json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump();
}

// The message of a JSON error object ({"detail": ...}, {"error": ...}, {"chart": {"error": ...}}),
// or empty when the body is no such object.
std::string JsonErrorMessage(std::string_view body) {
  if (!platform::TrimStart(body, platform::kWhiteSpace).starts_with('{')) return "";
  const nlohmann::json json = nlohmann::json::parse(body, nullptr, false);
  if (!json.is_object()) return "";
  const nlohmann::json* holder = &json;
  if (json.size() == 1 && json.begin()->is_object()) holder = &*json.begin();  // {"chart":{...}}
  for (const char* key : {"error", "detail", "message"}) {
    const auto it = holder->find(key);
    if (it == holder->end() || it->is_null()) continue;
    if (it->is_object()) {
      std::string message;
      for (const char* part : {"code", "description", "message"}) {
        if (const auto p = it->find(part); p != it->end() && !p->is_null()) {
          message += (message.empty() ? "" : ": ") + TextOf(*p);
        }
      }
      return message.empty() ? it->dump() : message;
    }
    return TextOf(*it);
  }
  return "";
}

}  // namespace

bool IsHtml(std::string_view body) {
  body = platform::TrimStart(body, platform::kWhiteSpace);
  if (body.starts_with("\xEF\xBB\xBF")) body.remove_prefix(3);  // a UTF-8 byte order mark
  return platform::TrimStart(body, platform::kWhiteSpace).starts_with('<');
}

std::string BaseUrl(std::string_view host) {
  std::string base(platform::TrimSpaces(host));
  if (base.find("://") == std::string::npos) base = "http://" + base;
  while (base.ends_with('/')) base.pop_back();
  return base;
}

std::string RefusalOf(const platform::HttpResponse& response, std::string_view expected) {
  if (!response.answered()) return "no answer: " + response.failure;
  const std::string status = "HTTP status " + std::to_string(response.status);
  if (response.status == 429) {
    return "rate limited by the service: " + platform::StatusText(response.status);
  }
  if (IsHtml(response.body)) {
    return "an HTML page instead of " + std::string(expected) + " (" + status +
           "): " + Quote(response.body);
  }
  if (const std::string message = JsonErrorMessage(response.body); !message.empty()) {
    return "a JSON error object (" + status + "): " + platform::QuoteForMessage(message);
  }
  if (response.status < 200 || response.status > 299) {
    const std::string said = platform::TrimStart(response.body, platform::kWhiteSpace).empty()
                                 ? ""
                                 : ": " + Quote(response.body);
    return platform::StatusText(response.status) + said;
  }
  return "";
}

std::string WrongShape(std::string_view what, std::string_view body) {
  return "an answer of the wrong shape (" + std::string(what) + "): " + Quote(body);
}

std::string StoredBody(std::vector<DayRow> rows) {
  std::stable_sort(rows.begin(), rows.end(),
                   [](const DayRow& a, const DayRow& b) { return a.date > b.date; });
  std::string body = "Date,Open,High,Low,Close,Volume,Adj Close\n";
  for (const DayRow& r : rows) {
    body += IsoDate(r.date) + "," + r.open + "," + r.high + "," + r.low + "," + r.close + "," +
            r.volume + "," + r.adjClose + "\n";
  }
  return body;
}

std::string IsoDate(double serial) {
  const platform::CivilDate d = platform::CivilFromSerial(serial);
  char text[16];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", d.year, d.month, d.day);
  return text;
}

std::string PriceText(double value) {
  return platform::FormatGeneral(std::round(value * 1e4) / 1e4);
}

}  // namespace halvard::data
