#include "nearest_name.h"

#include <algorithm>

namespace halvard::cli {

int EditDistance(std::string_view a, std::string_view b) {
  // Row by row over a, keeping the two rows before for the swap of neighbours.
  const size_t n = b.size();
  std::vector<int> before(n + 1), previous(n + 1), current(n + 1);
  for (size_t j = 0; j <= n; ++j) previous[j] = static_cast<int>(j);
  for (size_t i = 1; i <= a.size(); ++i) {
    current[0] = static_cast<int>(i);
    for (size_t j = 1; j <= n; ++j) {
      const int change = a[i - 1] == b[j - 1] ? 0 : 1;
      current[j] = std::min({previous[j] + 1, current[j - 1] + 1, previous[j - 1] + change});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        current[j] = std::min(current[j], before[j - 2] + 1);
      }
    }
    before.swap(previous);
    previous.swap(current);
  }
  return previous[n];
}

std::optional<std::string> NearestName(std::string_view typed,
                                       const std::vector<std::string>& names) {
  std::optional<std::string> nearest;
  int best = 3;  // more than two edits is a different word
  for (const std::string& name : names) {
    const int d = EditDistance(typed, name);
    if (d < best && 2 * d < static_cast<int>(name.size())) {
      best = d;
      nearest = name;
    }
  }
  return nearest;
}

}  // namespace halvard::cli
