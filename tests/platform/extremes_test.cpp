#include "halvard/platform/extremes.h"

#include <gtest/gtest.h>

#include <array>

namespace halvard::platform {
namespace {

TEST(Extremes, OnTiesTheNewestDayIsTaken) {
  const std::array<double, 5> highs = {3, 5, 5, 1, 5};
  int at = -1;
  EXPECT_EQ(GetMax<double>(highs, 5, at), 5);
  EXPECT_EQ(at, 1);
  EXPECT_EQ(GetMax<double>(highs, 1, at), 3);
  EXPECT_EQ(at, 0);
  EXPECT_EQ(GetMin<double>(highs, 5), 1);
  EXPECT_EQ(GetMin<double>(highs, 3), 3);
}

}  // namespace
}  // namespace halvard::platform
