#pragma once
// ServiceSettings: the [Services] section of the settings file, which chooses where price
// histories and company data come from. It lives beside the Config table, not in it: only the
// downloads read it.
//
//   Provider      table, chart (the default), stooq or tiingo
//   Table Host, Chart Host, Stooq Host, Tiingo Host
//                 a base URL per provider; "http://" is assumed when no scheme is given
//   Timeout       seconds a request may take, from 1 to 3600 (default 60)
//   Pause         milliseconds between two requests of the keyed and keyless services, from 0
//                 to 3600000 (500)
//   Retries       how many more times a request is tried after a 429 or 503 answer, a time-out
//                 or a dropped connection (3; 0 never retries)
//   Retry Wait    seconds before the first retry, doubled before each later one, with jitter (2)
//   Retry Wait Limit  seconds one wait may last at most, a Retry-After included (30)
//   Retry Total Wait  seconds the waits of one request may add up to (60)
//   Answer Limit  megabytes an answer may hold; a larger one is refused (32)
//   Tiingo Token  the key of the tiingo service
//   Quotes Host   base URL of the quotes line (name, exchange, EPS and estimates of a stock)
//   Profile Host  base URL of the company profile pages (business summary and industry)
//   Screener Host base URL of the stock screener service; empty (the default) when there is
//                 none, since no public screener answers its query

#include <string>
#include <string_view>

#include "halvard/settings/registry.h"

namespace halvard::settings {

inline constexpr std::string_view kServicesSection = "Services";

struct ServiceSettings {
  std::string provider = "chart";
  std::string tableHost = "ichart.finance.yahoo.com";
  std::string chartHost = "https://query1.finance.yahoo.com";
  std::string stooqHost = "https://stooq.com";
  std::string tiingoHost = "https://api.tiingo.com";
  double timeoutSeconds = 60;
  int pauseMilliseconds = 500;
  int retries = 3;
  double retryWaitSeconds = 2;
  double retryWaitLimitSeconds = 30;
  double retryTotalWaitSeconds = 60;
  int answerLimitMegabytes = 32;
  std::string tiingoToken;
  std::string quotesHost = "http://download.finance.yahoo.com";
  std::string profileHost = "https://finance.yahoo.com";
  std::string screenerHost;
};

// The stored section; missing values take their defaults. A value that does not convert (or a
// provider nobody knows) is a halvard::Error naming the value and the text.
ServiceSettings ReadServiceSettings(const MRegistry& store);

// One value by name (without regard to case), as --set "Services/Name=text" gives it. An unknown
// name or a text that does not convert is a halvard::UsageError.
void SetServiceSettingFromText(ServiceSettings& services, std::string_view name,
                               std::string_view text);

}  // namespace halvard::settings
