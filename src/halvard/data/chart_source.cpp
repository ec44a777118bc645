// The chart service: one JSON document per symbol with parallel arrays (timestamps, the quote
// values, the adjusted closes). Days with a null anywhere are holidays or gaps and are dropped.

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>

#include "halvard/data/crumb_session.h"
#include "halvard/data/price_answer.h"
#include "halvard/data/price_sources.h"
#include "halvard/data/symbol_name.h"
#include "halvard/platform/number_text.h"

namespace halvard::data {
namespace {

using nlohmann::json;

constexpr double kUnixEpochSerial = 25569;  // 1/1/1970
constexpr int64_t kSecondsPerDay = 86400;
// What the answer's seconds may be: a time-zone offset within a day, a moment from 1/1/1900 to
// 12/31/9999 (the dates a price file can hold). Anything else is not a trading day.
constexpr double kMaxOffset = kSecondsPerDay;
constexpr double kFirstMoment = -2208988800;
constexpr double kLastMoment = 253402300799;

// A JSON number as whole seconds (rounded down), when it is one and lies within [low, high].
std::optional<int64_t> Seconds(const json& value, double low, double high) {
  if (!value.is_number()) return std::nullopt;
  const double seconds = value.get<double>();
  if (!(seconds >= low && seconds <= high)) return std::nullopt;
  return static_cast<int64_t>(std::floor(seconds));
}

int64_t UnixSeconds(double serialDay) {
  return static_cast<int64_t>(std::floor(serialDay) - kUnixEpochSerial) * kSecondsPerDay;
}

// The array at json[key] (a member of an object), or nullptr.
const json* ArrayAt(const json& object, const char* key) {
  if (!object.is_object()) return nullptr;
  const auto it = object.find(key);
  return it != object.end() && it->is_array() ? &*it : nullptr;
}

// The first element of json[key] when that is a non-empty array of objects.
const json* FirstOf(const json& object, const char* key) {
  const json* array = ArrayAt(object, key);
  return array != nullptr && !array->empty() && array->front().is_object() ? &array->front()
                                                                           : nullptr;
}

class ChartSource : public PriceSource {
 public:
  ChartSource(std::string host, std::string cookieHost,
              std::unique_ptr<platform::HttpClient> client)
      : session_(std::move(host), std::move(cookieHost), std::move(client)) {}

  FetchResult Fetch(const std::string& symbol, double startDate, double endDate) override {
    const std::string url = session_.base() + "/v8/finance/chart/" + AddressPart(symbol) +
                            "?period1=" + std::to_string(UnixSeconds(startDate)) +
                            "&period2=" + std::to_string(UnixSeconds(endDate + 1)) + "&interval=1d";
    const platform::HttpResponse response = session_.Get(url);
    if (std::string refusal = RefusalOf(response); !refusal.empty()) {
      return Refused(response, std::move(refusal));
    }
    return Convert(response.body);
  }

 private:
  static FetchResult Convert(const std::string& body) {
    const json doc = json::parse(body, nullptr, false);
    const json* result =
        doc.is_object() && doc.contains("chart") ? FirstOf(doc["chart"], "result") : nullptr;
    if (result == nullptr) return {"", WrongShape("no chart result", body)};
    const json* timestamps = ArrayAt(*result, "timestamp");
    if (timestamps == nullptr) return {StoredBody({}), ""};  // no trading day in the range
    const json* indicators = result->contains("indicators") ? &(*result)["indicators"] : nullptr;
    const json* quote = indicators != nullptr ? FirstOf(*indicators, "quote") : nullptr;
    const json* adjusted = indicators != nullptr ? FirstOf(*indicators, "adjclose") : nullptr;
    if (quote == nullptr) return {"", WrongShape("no quote values", body)};

    const size_t days = timestamps->size();
    const char* const names[] = {"open", "high", "low", "close", "volume"};
    const json* columns[6] = {};
    for (int i = 0; i < 5; ++i) columns[i] = ArrayAt(*quote, names[i]);
    columns[5] = adjusted != nullptr ? ArrayAt(*adjusted, "adjclose") : columns[3];
    for (const json* column : columns) {
      if (column == nullptr || column->size() != days) {
        return {"", WrongShape("quote arrays missing or not as long as the timestamps", body)};
      }
    }
    // Timestamps are the session's opening moment in UTC; the exchange's offset puts them on
    // the local trading day (Sydney opens on the previous UTC day).
    int64_t offset = 0;
    if (const json* meta = result->contains("meta") ? &(*result)["meta"] : nullptr;
        meta != nullptr && meta->is_object() && meta->contains("gmtoffset") &&
        (*meta)["gmtoffset"].is_number()) {
      const auto given = Seconds((*meta)["gmtoffset"], -kMaxOffset, kMaxOffset);
      if (!given) return {"", WrongShape("a gmtoffset that is no time-zone offset", body)};
      offset = *given;
    }

    std::vector<DayRow> rows;
    for (size_t day = 0; day < days; ++day) {
      const json& stamp = (*timestamps)[day];
      double values[6];
      bool complete = stamp.is_number();
      const auto moment = Seconds(stamp, kFirstMoment - kMaxOffset, kLastMoment + kMaxOffset);
      if (complete && !moment) return {"", WrongShape("a timestamp beyond the dates", body)};
      for (int i = 0; i < 6 && complete; ++i) {
        const json& v = (*columns[i])[day];
        complete = v.is_number();
        if (complete) values[i] = v.get<double>();
      }
      if (!complete) continue;
      const int64_t local = *moment + offset;
      const int64_t unixDay =
          (local - (((local % kSecondsPerDay) + kSecondsPerDay) % kSecondsPerDay)) / kSecondsPerDay;
      rows.push_back({static_cast<double>(unixDay) + kUnixEpochSerial, PriceText(values[0]),
                      PriceText(values[1]), PriceText(values[2]), PriceText(values[3]),
                      platform::FormatGeneral(std::round(values[4])), PriceText(values[5])});
    }
    return {StoredBody(std::move(rows)), ""};
  }

  CrumbSession session_;
};

}  // namespace

std::unique_ptr<PriceSource> MakeChartSource(std::string host,
                                             std::unique_ptr<platform::HttpClient> client,
                                             std::string cookieHost) {
  return std::make_unique<ChartSource>(std::move(host), std::move(cookieHost), std::move(client));
}

}  // namespace halvard::data
