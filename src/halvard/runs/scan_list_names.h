#pragma once
// The names under which the scans propose to save their results as watch lists.

#include <string>
#include <string_view>

namespace halvard::runs {

inline constexpr std::string_view kFiftyTwoWeekHighListName = "52WeekHigh";
inline constexpr std::string_view kUnusualListName = "Unusual";
inline constexpr std::string_view kCorvaneListName = "corvane";
inline constexpr std::string_view kInABoxListName = "inbox";
inline constexpr std::string_view kBuyListName = "buy";
inline constexpr std::string_view kBelowStopLossListName = "belowstoploss";
inline constexpr std::string_view kTopEPSRankListName = "TopEPSRank";
inline constexpr std::string_view kTopRSRankListName = "TopRSRank";
inline constexpr std::string_view kIncreasingEPSListName = "IncreasingEPS";
inline constexpr std::string_view kIncreasingRSListName = "IncreasingRS";
// The X-week-high scan: the number of weeks followed at once by "WeekHigh" (26WeekHigh).
inline std::string XWeekHighListName(int weeks) {
  return std::to_string(weeks) + "WeekHigh";
}

}  // namespace halvard::runs
