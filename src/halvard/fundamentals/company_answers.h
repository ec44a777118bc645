#pragma once
// The JSON documents of the company-data services, read into what the Stocks table and eps.dat
// keep. Each reader takes the body as the service sent it and gives nothing when the body is not
// the document it expects; a figure the document does not hold stays empty, never 0.

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace halvard::fundamentals {

// What a source knows of one company.
struct CompanyFacts {
  std::string name;
  std::string exchange;
  std::string industry;
  std::string description;  // the business summary
  std::optional<double> eps;
  std::optional<double> yearEstimate;
  std::optional<double> nextYearEstimate;
};

// One line of the SEC's ticker list.
struct EdgarCompany {
  std::string cik;  // ten digits, as the SEC's document addresses take it
  std::string name;
  std::string exchange;
};

// company_tickers_exchange.json: {"fields":["cik","name","ticker","exchange"],"data":[[...],...]},
// the columns found by their names. Keyed by the ticker as the SEC writes it (upper case, a
// class after "-": BRK-B). The first line of a ticker wins.
std::optional<std::map<std::string, EdgarCompany>> ReadEdgarTickers(std::string_view body);

// The SEC's spelling of a symbol: upper case, "." before a share class written "-".
std::string EdgarTicker(std::string_view symbol);

// submissions/CIK##########.json: the company's name, its SIC description as the industry, and
// the exchange listed beside the ticker (in "tickers" and "exchanges").
std::optional<CompanyFacts> ReadEdgarSubmissions(std::string_view body, std::string_view ticker);

// api/xbrl/companyfacts/CIK##########.json: the latest annual diluted EPS in dollars, from a
// yearly report (form 10-K or its amendment) of a period of about a year; of two reports of the
// same period the later filed. The outer nothing means the body is not the document; the inner
// one that it holds no such figure.
std::optional<std::optional<double>> ReadEdgarAnnualEps(std::string_view body);

// The chart service's quote-summary document with the modules price, assetProfile,
// defaultKeyStatistics and earningsTrend: name, exchange, industry, business summary, trailing
// EPS, and the mean estimates of this fiscal year ("0y") and the next ("+1y").
std::optional<CompanyFacts> ReadQuoteSummary(std::string_view body);

}  // namespace halvard::fundamentals
