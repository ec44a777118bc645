#include "halvard/settings/services.h"

#include <array>
#include <cmath>
#include <string>

#include "halvard/platform/files.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::settings {
namespace {

using platform::EqualsIgnoreCase;

constexpr std::array<std::string_view, 4> kProviders = {"table", "chart", "stooq", "tiingo"};

// Each returns the reason when the text does not convert, empty when it was stored.
std::string FromText(std::string_view text, std::string& out) {
  out = std::string(platform::TrimSpaces(text));
  return "";
}

// A request needs at least a second (a shorter time-out rounds to none at all) and gives up
// within the hour; a pause between requests is at most an hour too.
constexpr double kMinTimeoutSeconds = 1;
constexpr double kMaxTimeoutSeconds = 3600;
constexpr int64_t kMaxPauseMilliseconds = 3600000;

std::string FromText(std::string_view text, double& out) {
  const auto number = platform::ParseDouble(text);
  if (!number || !(*number > 0) || !std::isfinite(*number)) return "a number of seconds above 0";
  out = *number;
  return "";
}

std::string TimeoutFromText(std::string_view text, double& out) {
  const auto number = platform::ParseDouble(text);
  if (!number || !(*number >= kMinTimeoutSeconds && *number <= kMaxTimeoutSeconds)) {
    return "a number of seconds from 1 to 3600";
  }
  out = *number;
  return "";
}

std::string FromText(std::string_view text, int& out) {
  const auto number = platform::ParseWholeNumber(text);
  if (!number || *number < 0 || *number > kMaxPauseMilliseconds) {
    return "a whole number of milliseconds from 0 to 3600000";
  }
  out = static_cast<int>(*number);
  return "";
}

// A whole number from low to high.
auto WholeInto(int& field, int low, int high, const char* what) {
  return [&field, low, high, what](std::string_view text) -> std::string {
    const auto number = platform::ParseWholeNumber(text);
    if (!number || *number < low || *number > high) {
      return std::string(what) + " from " + std::to_string(low) + " to " + std::to_string(high);
    }
    field = static_cast<int>(*number);
    return "";
  };
}

std::string ProviderFromText(std::string_view text, std::string& out) {
  const std::string_view t = platform::TrimSpaces(text);
  for (const std::string_view p : kProviders) {
    if (EqualsIgnoreCase(t, p)) {
      out = std::string(p);
      return "";
    }
  }
  return "one of table, chart, stooq, tiingo";
}

// Calls set(name, converter) for every value of the section; converter(text) stores the text
// into its field and returns why it could not.
template <class Visitor>
void VisitServices(ServiceSettings& s, Visitor&& visit) {
  const auto into = [](auto& field) {
    return [&field](std::string_view text) { return FromText(text, field); };
  };
  visit("Provider", [&s](std::string_view text) { return ProviderFromText(text, s.provider); });
  visit("Table Host", into(s.tableHost));
  visit("Chart Host", into(s.chartHost));
  visit("Stooq Host", into(s.stooqHost));
  visit("Tiingo Host", into(s.tiingoHost));
  visit("Timeout", [&s](std::string_view text) { return TimeoutFromText(text, s.timeoutSeconds); });
  visit("Pause", into(s.pauseMilliseconds));
  visit("Retries", WholeInto(s.retries, 0, 10, "a whole number"));
  visit("Retry Wait", into(s.retryWaitSeconds));
  visit("Retry Wait Limit", into(s.retryWaitLimitSeconds));
  visit("Retry Total Wait", into(s.retryTotalWaitSeconds));
  visit("Answer Limit", WholeInto(s.answerLimitMegabytes, 1, 4096, "a whole number of megabytes"));
  visit("Tiingo Token", into(s.tiingoToken));
  visit("Quotes Host", into(s.quotesHost));
  visit("Profile Host", into(s.profileHost));
  visit("Screener Host", into(s.screenerHost));
}

std::string Refusal(std::string_view name, std::string_view text, const std::string& expected) {
  return "setting [Services] " + std::string(name) + " = " + platform::QuoteForMessage(text) +
         " is not " + expected;
}

}  // namespace

ServiceSettings ReadServiceSettings(const MRegistry& store) {
  ServiceSettings services;
  VisitServices(services, [&](const char* name, auto&& store_text) {
    const std::string missing = "\x01";  // no stored text can hold this
    const std::string text = store.GetString(kAppName, kServicesSection, name, missing);
    if (text == missing) return;
    if (const std::string why = store_text(text); !why.empty()) {
      throw Error(store.file().string() + ": " + Refusal(name, text, why));
    }
  });
  return services;
}

void SetServiceSettingFromText(ServiceSettings& services, std::string_view name,
                               std::string_view text) {
  bool found = false;
  VisitServices(services, [&](const char* n, auto&& store_text) {
    if (found || !EqualsIgnoreCase(n, name)) return;
    found = true;
    if (const std::string why = store_text(text); !why.empty()) {
      throw UsageError(Refusal(n, text, why));
    }
  });
  if (!found) {
    throw UsageError("there is no setting Services/" + std::string(name) +
                     " (Provider, Table Host, Chart Host, Stooq Host, Tiingo Host, Timeout, "
                     "Pause, Retries, Retry Wait, Retry Wait Limit, Retry Total Wait, Answer "
                     "Limit, Tiingo Token, Quotes Host, Profile Host, Screener Host)");
  }
}

}  // namespace halvard::settings
