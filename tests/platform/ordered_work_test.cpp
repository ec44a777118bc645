#include "halvard/platform/ordered_work.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace halvard::platform {
namespace {

// Each thread's own state: the items it computed.
struct Counter {
  int computed = 0;
};

TEST(TakeInOrder, ResultsAreTakenInListOrderWhateverThreadComputedThem) {
  for (const int jobs : {1, 2, 7}) {
    std::atomic<int> workers = 0;
    std::string taken;
    const bool finished = TakeInOrder<std::string>(
        100, jobs,
        [&] {
          ++workers;
          return std::make_unique<Counter>();
        },
        [](Counter& c, int i, std::string& result) {
          ++c.computed;
          if (i % 7 == 0) std::this_thread::yield();  // some items finish out of turn
          result = std::to_string(i) + ",";
        },
        [&](int, const std::string* result) {
          taken += *result;
          return true;
        });
    EXPECT_TRUE(finished);
    std::string expected;
    for (int i = 0; i < 100; ++i) expected += std::to_string(i) + ",";
    EXPECT_EQ(taken, expected) << jobs << " jobs";
    EXPECT_EQ(workers, jobs);
  }
}

TEST(TakeInOrder, TakeStopsTheRunAndAFailedItemIsLeftToTake) {
  std::vector<int> seen;
  const bool finished = TakeInOrder<int>(
      1000, 3, [] { return std::make_unique<Counter>(); },
      [](Counter&, int i, int& result) {
        if (i == 2) throw std::runtime_error("no file");
        result = i * 10;
      },
      [&](int i, const int* result) {
        seen.push_back(result != nullptr ? *result : -i);
        return i < 4;
      });
  EXPECT_FALSE(finished);
  EXPECT_EQ(seen, (std::vector<int>{0, 10, -2, 30, 40}));
}

TEST(TakeInOrder, AnErrorOfTakeReachesTheCallerAndEndsTheThreads) {
  EXPECT_THROW(TakeInOrder<int>(
                   500, 2, [] { return std::make_unique<Counter>(); },
                   [](Counter&, int i, int& result) { result = i; },
                   [](int i, const int*) {
                     if (i == 3) throw std::runtime_error("bad file");
                     return true;
                   }),
               std::runtime_error);
  // Nothing to take: no thread waits for ever.
  EXPECT_TRUE(TakeInOrder<int>(
      0, 4, [] { return std::make_unique<Counter>(); },
      [](Counter&, int i, int& result) { result = i; }, [](int, const int*) { return false; }));
}

}  // namespace
}  // namespace halvard::platform
