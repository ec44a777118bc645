#pragma once
// The largest and the smallest of the first values of a series, as the price loader and the
// scans look for them.

#include <span>

namespace halvard::platform {

// The largest of the first count values and its index; on ties the newest day (lowest index).
template <class T>
T GetMax(std::span<const T> values, int count, int& index) {
  T best = values[0];
  index = 0;
  for (int i = 1; i < count; ++i) {
    if (values[i] > best) {
      best = values[i];
      index = i;
    }
  }
  return best;
}

// The smallest of the first count values.
template <class T>
T GetMin(std::span<const T> values, int count) {
  T best = values[0];
  for (int i = 1; i < count; ++i) {
    if (values[i] < best) best = values[i];
  }
  return best;
}

}  // namespace halvard::platform
