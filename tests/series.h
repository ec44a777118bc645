#pragma once
// Hand-made price series whose boxes, corvanes and trades were worked out by hand. Positions
// count from the oldest day; position p is dated 3/(p+1)/2024 (3/1/2024 + p days).

#include <cstdint>
#include <filesystem>
#include <vector>

namespace halvard::test {

struct Day {
  double open, high, low, close;
  int64_t volume = 1000;
};

// Two boxes, then a breakout above the second box's top and a fall through its stop loss.
//   box A: top p1 (12), bottom p2 (8), broken up on p6
//   box B: top p7 (14), bottom p8 (9), broken up on p12 (high 14.5)
// then p15 falls to a low of 8.5 from an open of 10.
std::vector<Day> TwoBoxes();

// TwoBoxes with two more boxes after the breakout of B (positions 13 to 25):
//   box C: top p13 (16), bottom p14 (12), broken up on p18 (high 16.5)
//   box D: top p19 (18), bottom p20 (14.5), broken up on p24 (high 18.5)
// then a fall through the raised stop loss on p25 (open 15, low 13).
std::vector<Day> FourBoxes();

// A flat base of 50 days under 10 (its low 8 on p30), a new high of 13 on p50 that tops a box
// (bottom 11 on p51, broken up on p55 at 13.5), then a steady rise to the newest day (p99,
// close 17.5).
std::vector<Day> CorvaneBreakout();

// Writes the series as a price file (newest day first), dated as above. With a length beyond
// the series, days are put before it (dated before 3/1/2024), each higher than the one before
// but all below 7.5, so the file has `length` days and no further box or corvane: a view of
// length - 1 days then sees the whole series with the day numbers it had alone.
void WritePrices(const std::filesystem::path& file, const std::vector<Day>& oldestFirst,
                 int length = 0);

}  // namespace halvard::test
