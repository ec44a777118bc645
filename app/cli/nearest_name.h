#pragma once
// The nearest of a few names to a mistyped one, for "did you mean ...?".

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace halvard::cli {

// The number of single-letter insertions, deletions, changes and swaps of two neighbours that
// turn a into b ("scna" to "scan" is one swap).
int EditDistance(std::string_view a, std::string_view b);

// The name nearest to typed, when it is close enough to be what was meant: at most two edits,
// and fewer than half the letters of the name. The first of equally near names wins.
std::optional<std::string> NearestName(std::string_view typed,
                                       const std::vector<std::string>& names);

}  // namespace halvard::cli
