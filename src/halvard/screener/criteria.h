#pragma once
// ScreenCriteria: what the user asks of the stocks, one field a control of the screener window
// and one option of `halvard screen`. Every field starts "not set": an empty text, a range with
// neither end. A range admits a value between its ends, both ends included.

#include <optional>
#include <string>

namespace halvard::screener {

struct Bounds {
  std::optional<double> min;
  std::optional<double> max;

  bool isSet() const { return min || max; }
  bool Admits(double value) const { return (!min || value >= *min) && (!max || value <= *max); }
};

struct ScreenCriteria {
  // Texts compare whole, without regard to case: "Semiconductors", "NYSE", "S&P 500".
  std::string industry;
  std::string exchange;
  std::string index;  // index membership

  Bounds price;              // share price, dollars (newest close)
  Bounds averageVolume;      // shares a day
  Bounds marketCap;          // market capitalisation, millions of dollars
  Bounds dividendYield;      // percent
  Bounds performance;        // price change over one year, percent
  Bounds beta;               // against the market
  Bounds sales;              // trailing twelve months, millions of dollars
  Bounds profitMargin;       // percent
  Bounds priceEarnings;      // P/E: price over trailing EPS
  Bounds priceSales;         // P/S
  Bounds priceBook;          // P/B
  Bounds eps;                // trailing earnings per share, dollars
  Bounds epsGrowthThisYear;  // this year's estimate over trailing EPS, percent
  Bounds epsGrowthNextYear;  // next year's estimate over this year's, percent
  Bounds recommendation;     // mean analyst recommendation, 1 strong buy to 5 strong sell
};

}  // namespace halvard::screener
