#include "series.h"

#include <algorithm>

#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"
#include "test_support.h"

namespace halvard::test {
namespace {

Day Mid(double high, double low) {
  return {(high + low) / 2, high, low, (high + low) / 2};
}

}  // namespace

std::vector<Day> TwoBoxes() {
  return {
      Mid(10, 9),    Mid(12, 10), Mid(11, 8),    Mid(11, 8.5),          Mid(11.5, 9),  Mid(11, 9),
      Mid(12.5, 10), Mid(14, 12), Mid(13, 9),    Mid(13, 10),           Mid(13.5, 10), Mid(13, 10),
      Mid(14.5, 13), Mid(14, 12), Mid(14.2, 11), Day{10, 10.5, 8.5, 9}, Mid(9.5, 8.6)};
}

std::vector<Day> FourBoxes() {
  std::vector<Day> days = TwoBoxes();
  days.resize(13);
  for (const Day& d : {Mid(16, 14), Mid(15, 12), Mid(15, 13), Mid(15.5, 13), Mid(15, 13),
                       Mid(16.5, 14.5), Mid(18, 16), Mid(17, 14.5), Mid(17, 15), Mid(17.5, 15),
                       Mid(17, 15), Mid(18.5, 16), Day{15, 16, 13, 14}, Mid(14, 13.5)}) {
    days.push_back(d);
  }
  return days;
}

std::vector<Day> CorvaneBreakout() {
  std::vector<Day> days(100, Day{9.5, 10, 9, 9.5});
  days[30].low = 8;
  const Day box[] = {{12, 13, 11.5, 12},   {12, 12.5, 11, 12},   {12, 12.8, 11.5, 12},
                     {12, 12.6, 11.6, 12}, {12, 12.9, 11.7, 12}, {13, 13.5, 12.5, 13}};
  for (int p = 50; p <= 55; ++p) days[p] = box[p - 50];
  for (int p = 56; p < 100; ++p) days[p] = {13, 13.5 + 0.1 * (p - 55), 12.5 + 0.1 * (p - 55), 13};
  days[99].close = 17.5;
  return days;
}

void WritePrices(const std::filesystem::path& file, const std::vector<Day>& oldestFirst,
                 int length) {
  using platform::FormatGeneral;
  const int pad = std::max(0, length - static_cast<int>(oldestFirst.size()));
  std::vector<Day> days;
  for (int q = 0; q < pad; ++q) {
    const double high = 5 + 2.5 * q / pad;
    days.push_back(Mid(high, high - 0.5));
  }
  days.insert(days.end(), oldestFirst.begin(), oldestFirst.end());
  const double firstDate = *platform::ParseDate("2024-03-01") - pad;
  std::vector<std::string> lines;
  for (int q = static_cast<int>(days.size()) - 1; q >= 0; --q) {
    const Day& d = days[q];
    lines.push_back(platform::FormatShortDate(firstDate + q) + "," + FormatGeneral(d.open) + "," +
                    FormatGeneral(d.high) + "," + FormatGeneral(d.low) + "," +
                    FormatGeneral(d.close) + "," + std::to_string(d.volume));
  }
  WriteText(file, PriceFile(lines));
}

}  // namespace halvard::test
