#include "halvard/settings/services.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "halvard/platform/files.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"
#include "halvard/settings/value_from_text.h"

namespace halvard::settings {
namespace {

using platform::EqualsIgnoreCase;

constexpr std::array<std::string_view, 4> kProviders = {"table", "chart", "stooq", "tiingo"};
constexpr std::array<const char*, 2> kKeyNames = {"Tiingo Token", "Stooq Key"};

// Each returns the reason when the text does not convert, empty when it was stored.
std::string FromText(std::string_view text, std::string& out) {
  out = std::string(platform::TrimSpaces(text));
  return "";
}

template <class T>
std::string Stored(Converted<T> converted, T& field) {
  if (!converted.value) return converted.expected;
  field = *converted.value;
  return "";
}

auto NumberInto(double& field, NumberRange range) {
  return
      [&field, range](std::string_view text) { return Stored(NumberFromText(text, range), field); };
}

auto WholeInto(int& field, WholeRange range) {
  return
      [&field, range](std::string_view text) { return Stored(WholeFromText(text, range), field); };
}

// A request needs at least a second (a shorter time-out rounds to none at all) and gives up
// within the hour; a pause between requests is at most an hour too.
const NumberRange kTimeoutSeconds{1, 3600, "seconds"};
const NumberRange kWaitSeconds{0, std::nullopt, "seconds"};
constexpr WholeRange kPauseMilliseconds{0, 3600000, "milliseconds"};
constexpr WholeRange kRetries{0, 10};
constexpr WholeRange kAnswerMegabytes{1, 4096, "megabytes"};

// One provider or several separated by ",", each known and named once; stored in lower case
// without blanks ("chart,tiingo").
std::string ProviderFromText(std::string_view text, std::string& out) {
  constexpr const char* kExpected =
      "one of table, chart, stooq, tiingo, or several of them separated by \",\"";
  std::string chain;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(',', start);
    const std::string_view one = platform::TrimSpaces(text.substr(start, comma - start));
    const auto known = std::find_if(kProviders.begin(), kProviders.end(),
                                    [&](std::string_view p) { return EqualsIgnoreCase(one, p); });
    if (known == kProviders.end()) return kExpected;
    const std::string name(*known);
    if (("," + chain + ",").find("," + name + ",") != std::string::npos) return kExpected;
    chain += (chain.empty() ? "" : ",") + name;
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  out = chain;
  return "";
}

std::string FundamentalsFromText(std::string_view text, std::string& out) {
  for (const std::string_view f : {"edgar", "summary", "quotes"}) {
    if (EqualsIgnoreCase(platform::TrimSpaces(text), f)) {
      out = std::string(f);
      return "";
    }
  }
  return "one of edgar, summary, quotes";
}

// The contact goes into a request header: one line of printable text with an e-mail address
// and something more (a name) beside it.
std::string ContactFromText(std::string_view text, std::string& out) {
  const std::string_view t = platform::TrimSpaces(text);
  constexpr const char* kExpected =
      "a name and an e-mail address, such as \"Jane Doe jane@example.com\"";
  if (t.empty()) {
    out.clear();
    return "";
  }
  if (std::any_of(t.begin(), t.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; })) {
    return kExpected;
  }
  bool mail = false;
  int words = 0;
  for (size_t start = 0; start < t.size();) {
    const size_t end = std::min(t.find(' ', start), t.size());
    const std::string_view word = t.substr(start, end - start);
    if (!word.empty()) {
      ++words;
      const size_t at = word.find('@');
      mail = mail || (at != std::string_view::npos && at > 0 &&
                      word.find('.', at) != std::string_view::npos && word.back() != '.');
    }
    start = end + 1;
  }
  if (!mail || words < 2) return kExpected;
  out = std::string(t);
  return "";
}

std::string TextOf(const std::string& field) {
  return field;
}
std::string TextOf(double field) {
  return platform::FormatGeneral(field);
}
std::string TextOf(int field) {
  return std::to_string(field);
}

// Calls visit(name, converter, text) for every value of the section; converter(text) stores the
// text into its field and returns why it could not; text() is the field as the file holds it.
template <class Settings, class Visitor>
void VisitServices(Settings& s, Visitor&& visit) {
  const auto into = [](std::string& field) {
    return [&field](std::string_view text) { return FromText(text, field); };
  };
  const auto value = [](auto& field) { return [&field] { return TextOf(field); }; };
  const auto with = [&](const char* name, auto& field, auto convert) {
    visit(
        name, [&field, convert](std::string_view text) { return convert(text, field); },
        value(field));
  };
  with("Provider", s.provider, ProviderFromText);
  visit("Table Host", into(s.tableHost), value(s.tableHost));
  visit("Chart Host", into(s.chartHost), value(s.chartHost));
  visit("Stooq Host", into(s.stooqHost), value(s.stooqHost));
  visit("Tiingo Host", into(s.tiingoHost), value(s.tiingoHost));
  visit("Timeout", NumberInto(s.timeoutSeconds, kTimeoutSeconds), value(s.timeoutSeconds));
  visit("Pause", WholeInto(s.pauseMilliseconds, kPauseMilliseconds), value(s.pauseMilliseconds));
  visit("Retries", WholeInto(s.retries, kRetries), value(s.retries));
  visit("Retry Wait", NumberInto(s.retryWaitSeconds, kWaitSeconds), value(s.retryWaitSeconds));
  visit("Retry Wait Limit", NumberInto(s.retryWaitLimitSeconds, kWaitSeconds),
        value(s.retryWaitLimitSeconds));
  visit("Retry Total Wait", NumberInto(s.retryTotalWaitSeconds, kWaitSeconds),
        value(s.retryTotalWaitSeconds));
  visit("Answer Limit", WholeInto(s.answerLimitMegabytes, kAnswerMegabytes),
        value(s.answerLimitMegabytes));
  visit("Tiingo Token", into(s.tiingoToken), value(s.tiingoToken));
  visit("Stooq Key", into(s.stooqKey), value(s.stooqKey));
  visit("Cookie Host", into(s.cookieHost), value(s.cookieHost));
  visit("Quotes Host", into(s.quotesHost), value(s.quotesHost));
  visit("Profile Host", into(s.profileHost), value(s.profileHost));
  visit("Screener Host", into(s.screenerHost), value(s.screenerHost));
  with("Fundamentals", s.fundamentals, FundamentalsFromText);
  with("Contact", s.contact, ContactFromText);
  visit("Edgar Host", into(s.edgarHost), value(s.edgarHost));
  visit("Edgar Data Host", into(s.edgarDataHost), value(s.edgarDataHost));
}

std::string Refusal(std::string_view name, std::string_view text, const std::string& expected) {
  return "setting [Services] " + std::string(name) + " = " + platform::QuoteForMessage(text) +
         " is not " + expected;
}

std::string AllNames() {
  std::string names;
  for (const ServiceText& s : ServiceSettingsAsText(ServiceSettings{})) {
    names += (names.empty() ? "" : ", ") + s.name;
  }
  return names;
}

UsageError UnknownService(std::string_view name) {
  std::string message = "there is no setting ";
  message.append(platform::QuoteForMessage(std::string("Services/").append(name)))
      .append(" (")
      .append(AllNames())
      .append(")");
  return UsageError(message);
}

}  // namespace

ServiceSettings ReadServiceSettings(const MRegistry& store) {
  ServiceSettings services;
  VisitServices(services, [&](const char* name, auto&& store_text, auto&&) {
    const std::string missing = "\x01";  // no stored text can hold this
    const std::string text = store.GetString(kAppName, kServicesSection, name, missing);
    if (text == missing) return;
    if (const std::string why = store_text(text); !why.empty()) {
      throw Error(store.file().string() + ": " + Refusal(name, text, why));
    }
  });
  return services;
}

std::vector<ServiceText> ServiceSettingsAsText(const ServiceSettings& services) {
  std::vector<ServiceText> all;
  ServiceSettings copy = services;
  VisitServices(copy, [&](const char* name, auto&&, auto&& text) {
    all.push_back({name, text()});
  });
  return all;
}

ServiceText GetServiceSettingText(const ServiceSettings& services, std::string_view name) {
  for (ServiceText& s : ServiceSettingsAsText(services)) {
    if (EqualsIgnoreCase(s.name, name)) return s;
  }
  throw UnknownService(name);
}

ServiceText SetServiceSettingFromText(ServiceSettings& services, std::string_view name,
                                      std::string_view text) {
  std::optional<ServiceText> found;
  VisitServices(services, [&](const char* n, auto&& store_text, auto&& stored) {
    if (found || !EqualsIgnoreCase(n, name)) return;
    if (const std::string why = store_text(text); !why.empty()) {
      throw UsageError(Refusal(n, text, why));
    }
    found = ServiceText{n, stored()};
  });
  if (!found) throw UnknownService(name);
  // A text that would not read back would make every later run fail on the file.
  if (!StoredTextReadsBack(found->text)) {
    throw UsageError("setting [Services] " + found->name + " = " + platform::QuoteForMessage(text) +
                     " would not read back from the settings file as it was given");
  }
  return *found;
}

std::vector<std::string> ProviderChain(const ServiceSettings& services) {
  std::vector<std::string> chain;
  size_t start = 0;
  for (size_t comma; (comma = services.provider.find(',', start)) != std::string::npos;
       start = comma + 1) {
    chain.push_back(services.provider.substr(start, comma - start));
  }
  chain.push_back(services.provider.substr(start));
  return chain;
}

bool IsServiceKey(std::string_view name) {
  return std::any_of(kKeyNames.begin(), kKeyNames.end(),
                     [&](const char* key) { return EqualsIgnoreCase(name, key); });
}

std::string ProtectServiceKeys(const MRegistry& store) {
  const bool holdsKey = std::any_of(kKeyNames.begin(), kKeyNames.end(), [&](const char* key) {
    return !store.GetString(kAppName, kServicesSection, key, "").empty();
  });
  if (!holdsKey) return "";
  if (!platform::RestrictToOwner(store.file())) return "";
  return "the settings file " + store.file().string() +
         " holds a service key and others could read it: it is now readable by you alone "
         "(mode 0600)";
}

}  // namespace halvard::settings
