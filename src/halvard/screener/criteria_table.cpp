#include "halvard/screener/criteria_table.h"

#include <array>
#include <cmath>

#include "halvard/error.h"
#include "halvard/platform/number_text.h"
#include "halvard/platform/text.h"

namespace halvard::screener {
namespace {

using C = ScreenCriteria;
using L = LocalReadings;

constexpr std::array<TextCriterion, 3> kText = {{
    {"industry", "industry", &C::industry, &L::industry},
    {"exchange", "exchange", &C::exchange, &L::exchange},
    {"index", "index membership", &C::index, nullptr},
}};

constexpr std::array<RangeCriterion, 15> kRange = {{
    {"price", "share price", "dollars", &C::price, &L::price, false},
    {"volume", "average volume", "shares a day", &C::averageVolume, &L::averageVolume, false},
    {"market-cap", "market capitalisation", "millions of dollars", &C::marketCap, nullptr, false},
    {"dividend-yield", "dividend yield", "percent", &C::dividendYield, nullptr, false},
    {"performance", "one-year performance", "percent", &C::performance, &L::performance, false},
    {"beta", "beta", "against the market", &C::beta, nullptr, false},
    {"sales", "sales", "millions of dollars a year", &C::sales, nullptr, false},
    {"profit-margin", "profit margin", "percent", &C::profitMargin, nullptr, false},
    {"pe", "price/earnings ratio", "price over trailing EPS", &C::priceEarnings, &L::priceEarnings,
     true},
    {"ps", "price/sales ratio", "price over sales a share", &C::priceSales, nullptr, false},
    {"pb", "price/book ratio", "price over book value a share", &C::priceBook, nullptr, false},
    {"eps", "EPS", "dollars a share, trailing", &C::eps, &L::eps, true},
    {"eps-growth-this-year", "EPS growth this year", "percent, estimate over trailing EPS",
     &C::epsGrowthThisYear, &L::epsGrowthThisYear, true},
    {"eps-growth-next-year", "EPS growth next year", "percent, next over this year's estimate",
     &C::epsGrowthNextYear, &L::epsGrowthNextYear, true},
    {"recommendation", "analyst recommendation", "mean, 1 strong buy to 5 strong sell",
     &C::recommendation, nullptr, false},
}};

}  // namespace

std::span<const TextCriterion> TextCriteria() {
  return kText;
}

std::span<const RangeCriterion> RangeCriteria() {
  return kRange;
}

bool IsSet(const std::string& text) {
  return !platform::TrimSpaces(text).empty();
}

std::vector<std::string> LocallyUnanswered(const ScreenCriteria& c) {
  std::vector<std::string> labels;
  for (const TextCriterion& t : kText) {
    if (t.local == nullptr && IsSet(c.*t.field)) labels.emplace_back(t.label);
  }
  for (const RangeCriterion& r : kRange) {
    if (r.local == nullptr && (c.*r.field).isSet()) labels.emplace_back(r.label);
  }
  return labels;
}

bool NeedsStockRows(const ScreenCriteria& c) {
  for (const TextCriterion& t : kText) {
    if (t.local != nullptr && IsSet(c.*t.field)) return true;
  }
  for (const RangeCriterion& r : kRange) {
    if (r.needsRow && (c.*r.field).isSet()) return true;
  }
  return false;
}

void CheckCriteria(const ScreenCriteria& c) {
  for (const RangeCriterion& r : kRange) {
    const Bounds& b = c.*r.field;
    for (const std::optional<double>& end : {b.min, b.max}) {
      if (end && !std::isfinite(*end)) {
        throw UsageError("the " + std::string(r.label) + " range needs numbers, not " +
                         platform::FormatGeneral(*end));
      }
    }
    if (b.min && b.max && *b.min > *b.max) {
      throw UsageError("the " + std::string(r.label) + " minimum " +
                       platform::FormatGeneral(*b.min) + " is above its maximum " +
                       platform::FormatGeneral(*b.max));
    }
  }
}

}  // namespace halvard::screener
