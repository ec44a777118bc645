#pragma once
// ServiceSettings: the [Services] section of the settings file, which chooses where price
// histories and company data come from. It lives beside the Config table, not in it: only the
// downloads read it.
//
//   Provider      table, chart (the default), stooq or tiingo, or several of them separated by
//                 "," (chart,tiingo): each is tried in turn for a symbol until one serves it
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
//   Stooq Key     the key of the stooq service (its apikey)
//   Cookie Host   where the chart service hands out the cookie its crumb belongs to
//   Fundamentals  where company data comes from: edgar (the default), summary or quotes
//   Contact       name and e-mail sent to the SEC's services in the User-Agent, as they require
//   Edgar Host    base URL of the SEC's files (the ticker list with exchanges)
//   Edgar Data Host  base URL of the SEC's company documents (submissions, company facts)
//   Quotes Host   base URL of the quotes line (name, exchange, EPS and estimates of a stock)
//   Profile Host  base URL of the company profile pages (business summary and industry)
//   Screener Host base URL of the stock screener service; empty (the default) when there is
//                 none, since no public screener answers its query

#include <string>
#include <string_view>
#include <vector>

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
  std::string stooqKey;
  std::string cookieHost = "https://fc.yahoo.com";
  std::string fundamentals = "edgar";
  std::string contact;
  std::string edgarHost = "https://www.sec.gov";
  std::string edgarDataHost = "https://data.sec.gov";
};

// One value of the section as text: how "config show" lists it and the file holds it.
struct ServiceText {
  std::string name;
  std::string text;
};

// Every value of the section in its order, as text.
std::vector<ServiceText> ServiceSettingsAsText(const ServiceSettings& services);

// The services of Provider in the order they are tried.
std::vector<std::string> ProviderChain(const ServiceSettings& services);

// Whether a value holds a key (shown masked, and the reason the file is kept private).
bool IsServiceKey(std::string_view name);

// The stored section; missing values take their defaults. A value that does not convert (or a
// provider nobody knows) is a halvard::Error naming the value and the text.
ServiceSettings ReadServiceSettings(const MRegistry& store);

// One value by name (without regard to case), as --set "Services/Name=text" gives it; returns
// the value as the section holds it (the name as spelt here, the text as stored). An unknown
// name or a text that does not convert is a halvard::UsageError.
ServiceText SetServiceSettingFromText(ServiceSettings& services, std::string_view name,
                                      std::string_view text);

// The text of one value (the name without regard to case); an unknown name is a UsageError.
ServiceText GetServiceSettingText(const ServiceSettings& services, std::string_view name);

// Keys are kept in the settings file, so a file holding one is for its owner alone: when the
// store's file holds a key and others may read it, its mode becomes 0600 and the warning says
// so; otherwise nothing happens and the text is empty.
std::string ProtectServiceKeys(const MRegistry& store);

}  // namespace halvard::settings
