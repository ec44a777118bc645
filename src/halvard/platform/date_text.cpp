#include "halvard/platform/date_text.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "halvard/platform/text.h"

namespace halvard::platform {
namespace {

// Days from 1970-01-01 of a proleptic Gregorian date (H. Hinnant's algorithm).
constexpr long DaysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const long yoe = y - era * 400;
  const long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

// Fixed when compiled: other files' constants are computed from it as the program starts, in
// an order no one controls.
constexpr long kSerialEpoch = DaysFromCivil(1899, 12, 30);

bool IsLeap(int y) {
  return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int DaysInMonth(int y, int m) {
  static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeap(y) ? 29 : kDays[m - 1];
}

std::optional<double> Make(int y, int m, int d) {
  if (m < 1 || m > 12 || d < 1 || y < 100 || y > 9999 || d > DaysInMonth(y, m)) return {};
  return SerialFromCivil({y, m, d});
}

int WidenYear(int year, size_t digits) {
  if (digits > 2) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

// Reads an unsigned decimal number at text[pos]; returns the digit count (0 when none).
size_t ReadNumber(std::string_view text, size_t& pos, int& value) {
  const size_t start = pos;
  value = 0;
  while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9' && pos - start < 9) {
    value = value * 10 + (text[pos] - '0');
    ++pos;
  }
  return pos - start;
}

int MonthFromName(std::string_view name) {
  static constexpr std::array<std::string_view, 12> kNames = {
      "january", "february", "march",     "april",   "may",      "june",
      "july",    "august",   "september", "october", "november", "december"};
  if (name.size() < 3) return 0;
  for (size_t m = 0; m < kNames.size(); ++m) {
    const std::string_view full = kNames[m];
    if (name.size() > full.size()) continue;
    bool same = true;
    for (size_t i = 0; i < name.size() && same; ++i) {
      same = (name[i] | 0x20) == full[i];
    }
    if (same && (name.size() == 3 || name.size() == full.size())) return static_cast<int>(m) + 1;
  }
  return 0;
}

std::optional<double> ParseDateOnly(std::string_view s) {
  size_t pos = 0;
  int a = 0;
  const size_t aDigits = ReadNumber(s, pos, a);
  if (aDigits == 0 || pos >= s.size()) return {};
  const char sep = s[pos++];
  if (sep == '-' && aDigits == 4) {  // yyyy-mm-dd
    int m = 0, d = 0;
    if (ReadNumber(s, pos, m) == 0 || pos >= s.size() || s[pos++] != '-') return {};
    if (ReadNumber(s, pos, d) == 0 || pos != s.size()) return {};
    return Make(a, m, d);
  }
  const bool numericMonth = pos < s.size() && s[pos] >= '0' && s[pos] <= '9';
  if (sep == '/' || (sep == '-' && numericMonth)) {  // M/d/yyyy, M/d/yy, M-d-yyyy, yyyy/M/d
    int b = 0, c = 0;
    if (ReadNumber(s, pos, b) == 0 || pos >= s.size() || s[pos++] != sep) return {};
    const size_t cDigits = ReadNumber(s, pos, c);
    if (cDigits == 0 || pos != s.size()) return {};
    if (aDigits == 4) return Make(a, b, c);
    return Make(WidenYear(c, cDigits), a, b);
  }
  if (sep == '-' || sep == ' ') {  // d-Mon-yy
    const size_t nameStart = pos;
    while (pos < s.size() && ((s[pos] | 0x20) >= 'a' && (s[pos] | 0x20) <= 'z')) ++pos;
    const int m = MonthFromName(s.substr(nameStart, pos - nameStart));
    if (m == 0 || pos >= s.size() || s[pos++] != sep) return {};
    int y = 0;
    const size_t yDigits = ReadNumber(s, pos, y);
    if (yDigits == 0 || pos != s.size()) return {};
    return Make(WidenYear(y, yDigits), m, a);
  }
  return {};
}

std::optional<double> ParseTimeOnly(std::string_view s) {
  size_t pos = 0;
  int h = 0, m = 0, sec = 0;
  if (ReadNumber(s, pos, h) == 0 || pos >= s.size() || s[pos++] != ':') return {};
  if (ReadNumber(s, pos, m) == 0) return {};
  if (pos < s.size() && s[pos] == ':') {
    ++pos;
    if (ReadNumber(s, pos, sec) == 0) return {};
  }
  while (pos < s.size() && s[pos] == ' ') ++pos;
  const std::string_view suffix = s.substr(pos);
  if (!suffix.empty()) {
    if (suffix.size() != 2 || (suffix[1] | 0x20) != 'm' || h < 1 || h > 12) return {};
    const char ap = static_cast<char>(suffix[0] | 0x20);
    if (ap != 'a' && ap != 'p') return {};
    h = (h % 12) + (ap == 'p' ? 12 : 0);
  }
  if (h > 23 || m > 59 || sec > 59) return {};
  return (h * 3600 + m * 60 + sec) / 86400.0;
}

}  // namespace

double SerialFromCivil(CivilDate date) {
  return static_cast<double>(DaysFromCivil(date.year, date.month, date.day) - kSerialEpoch);
}

CivilDate CivilFromSerial(double serial) {
  const long z = static_cast<long>(std::floor(serial)) + kSerialEpoch + 719468;
  const long era = (z >= 0 ? z : z - 146096) / 146097;
  const long doe = z - era * 146097;
  const long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long mp = (5 * doy + 2) / 153;
  const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  return {static_cast<int>(yoe + era * 400 + (m <= 2)), m, d};
}

std::optional<double> ParseDate(std::string_view text) {
  // The quotes service's own yyyy-mm-dd, on every line of most price files: read it directly.
  const auto digit = [&text](size_t i) { return text[i] >= '0' && text[i] <= '9'; };
  if (text.size() == 10 && text[4] == '-' && text[7] == '-' && digit(0) && digit(1) && digit(2) &&
      digit(3) && digit(5) && digit(6) && digit(8) && digit(9)) {
    const auto number = [&text](size_t at, size_t n) {
      int v = 0;
      for (size_t i = at; i < at + n; ++i) v = v * 10 + (text[i] - '0');
      return v;
    };
    return Make(number(0, 4), number(5, 2), number(8, 2));
  }
  return ParseDateOnly(TrimSpaces(text));
}

std::optional<double> ParseDateTime(std::string_view text) {
  const std::string_view s = TrimSpaces(text);
  if (auto date = ParseDateOnly(s)) return date;
  if (auto time = ParseTimeOnly(s)) return time;
  const size_t space = s.find(' ');
  if (space == std::string_view::npos) return {};
  const auto date = ParseDateOnly(s.substr(0, space));
  const auto time = ParseTimeOnly(TrimSpaces(s.substr(space + 1)));
  if (!date || !time) return {};
  return *date + *time;
}

std::string FormatShortDate(double serial) {
  const CivilDate c = CivilFromSerial(serial);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%d/%d/%d", c.month, c.day, c.year);
  return buffer;
}

std::string FormatTime(double serial) {
  const double fraction = serial - std::floor(serial);
  long seconds = std::lround(fraction * 86400.0) % 86400;
  const int h = static_cast<int>(seconds / 3600);
  const int m = static_cast<int>(seconds / 60 % 60);
  const int s = static_cast<int>(seconds % 60);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%d:%02d:%02d %s", h % 12 == 0 ? 12 : h % 12, m, s,
                h < 12 ? "AM" : "PM");
  return buffer;
}

std::string FormatDateTime(double serial) {
  const double day = std::floor(serial);
  const bool hasTime = std::lround((serial - day) * 86400.0) % 86400 != 0;
  if (!hasTime) return FormatShortDate(serial);
  if (day == 0) return FormatTime(serial);
  return FormatShortDate(serial) + " " + FormatTime(serial);
}

}  // namespace halvard::platform
