#pragma once
// The criteria as a table: for each, the name the query and the command line use, the label
// messages use, and the local reading that answers it (nullptr when the local data cannot).
// The query, the command-line options, the local screen and the not-applied list all walk
// this one table, so a criterion added here reaches all of them.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvard/screener/criteria.h"
#include "halvard/screener/local_readings.h"

namespace halvard::screener {

struct TextCriterion {
  std::string_view key;    // query parameter, command-line option --KEY
  std::string_view label;  // "industry"
  std::string ScreenCriteria::*field;
  std::optional<std::string> LocalReadings::*local;
};

struct RangeCriterion {
  std::string_view key;    // query parameter, command-line options --KEY-min and --KEY-max
  std::string_view label;  // "share price"
  std::string_view unit;   // "dollars", for help texts
  Bounds ScreenCriteria::*field;
  std::optional<double> LocalReadings::*local;
  bool needsRow;  // the local reading comes from the stock database
};

std::span<const TextCriterion> TextCriteria();
std::span<const RangeCriterion> RangeCriteria();

// A text criterion is set when it holds more than spaces.
bool IsSet(const std::string& text);

// The labels of the criteria set in c that the local data cannot answer, in table order.
std::vector<std::string> LocallyUnanswered(const ScreenCriteria& c);

// Whether a criterion set in c reads the stock database in the local screen.
bool NeedsStockRows(const ScreenCriteria& c);

// A range whose minimum lies above its maximum selects nothing, which is never what was meant:
// a halvard::UsageError naming the criterion and both ends.
void CheckCriteria(const ScreenCriteria& c);

}  // namespace halvard::screener
