#include "halvard/data/file_parser.h"

#include <cmath>
#include <cstring>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/extremes.h"
#include "halvard/platform/files.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"

namespace halvard::data {
namespace {

using platform::LineReader;
using platform::SplitFields;

constexpr const char* kFieldNames[] = {"date", "open", "high", "low", "close", "volume"};

[[noreturn]] void Fail(const std::string& path, size_t line, const std::string& problem) {
  throw PriceFileError(path, line, problem);
}

std::string Quoted(std::string_view text) {
  return platform::QuoteForMessage(text);
}

// The most shares a day can trade: far beyond any market, and 139 of them still add up
// without overflow.
constexpr int64_t kMaxVolume = 1'000'000'000'000'000;

// A price is a finite number of dollars, never below zero: "nan", "inf" and "-3" would reach
// the engine's divisions and conversions. The message is built only on failure: every field of
// every day passes through here.
double Price(std::string_view field, int which, const std::string& path, size_t line) {
  const auto value = platform::ParseDouble(field);
  const char* problem = !value                   ? " is not a number"
                        : !std::isfinite(*value) ? " is not a finite number"
                        : *value < 0             ? " is below zero"
                                                 : nullptr;
  if (problem) {
    std::string what = "the ";
    what.append(kFieldNames[which]).append(" ").append(Quoted(field)).append(problem);
    Fail(path, line, what);
  }
  return *value;
}

int64_t Volume(std::string_view field, const std::string& path, size_t line) {
  const auto value = platform::ParseWholeNumber(field);
  const char* problem = !value                ? " is not a number"
                        : *value < 0          ? " is below zero"
                        : *value > kMaxVolume ? " is beyond 10^15 shares"
                                              : nullptr;
  if (problem) {
    std::string what = "the volume ";
    what.append(Quoted(field)).append(problem);
    Fail(path, line, what);
  }
  return *value;
}

// The first line is the header of the quotes service, whatever it holds: skipped unread.
void SkipHeader(LineReader& reader, const std::string& path) {
  std::string_view header;
  if (!reader.Next(header)) throw PriceFileError(path, 0, "the file is empty");
}

template <size_t N>
void RequireFields(size_t found, const std::string& path, size_t line) {
  if (found < N) {
    Fail(path, line,
         "expected at least " + std::to_string(N) + " comma-separated fields, found " +
             std::to_string(found));
  }
}

// The usual day line of the quotes service, "2017-12-29,67.5,67.580002,66.93,66.970001,1064900",
// read in one pass: plain decimals of at most 15 digits, a volume of plain digits. Gives the
// values the field-by-field reading below gives (a decimal is its digits over a power of ten,
// as ParseDouble reads it), and false for anything else, which that reading then takes up with
// its messages.
class QuickDayLine {
 public:
  // The last yyyy-mm-dd date read: the next line's date, in the same month, is a few days off.
  struct LastDate {
    char yearMonth[7] = {};
    int day = 0;
    double serial = 0;
  };

  explicit QuickDayLine(std::string_view line)
      : at_(line.data()), end_(line.data() + line.size()) {}

  bool Read(LastDate& last, double& date, double (&prices)[4], int64_t& volume) {
    const char* comma = static_cast<const char*>(std::memchr(at_, ',', end_ - at_));
    if (comma == nullptr || !Date(std::string_view(at_, comma - at_), last, date)) return false;
    at_ = comma + 1;
    for (double& price : prices) {
      if (!Decimal(price) || at_ == end_ || *at_ != ',') return false;
      ++at_;
    }
    return Whole(volume) && (at_ == end_ || *at_ == ',');
  }

 private:
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

  // Days 1 to 28 exist in every month, so a day of the last date's month needs no calendar.
  static bool Date(std::string_view text, LastDate& last, double& date) {
    const auto digit = [&text](size_t i) { return text[i] >= '0' && text[i] <= '9'; };
    if (last.day != 0 && text.size() == 10 && std::memcmp(text.data(), last.yearMonth, 7) == 0 &&
        digit(8) && digit(9)) {
      const int day = (text[8] - '0') * 10 + (text[9] - '0');
      if (day >= 1 && day <= 28) {
        date = last.serial + (day - last.day);
        return true;
      }
    }
    const auto parsed = platform::ParseDate(text);
    if (!parsed) return false;
    date = *parsed;
    if (text.size() == 10 && text[4] == '-' && text[7] == '-' && digit(0) && digit(1) && digit(2) &&
        digit(3) && digit(5) && digit(6) && digit(8) && digit(9)) {
      std::memcpy(last.yearMonth, text.data(), 7);
      last.day = (text[8] - '0') * 10 + (text[9] - '0');
      last.serial = date;
    }
    return true;
  }

  bool Decimal(double& value) {
    int64_t digits = 0;
    int count = 0;
    int decimals = -1;
    for (; at_ != end_ && *at_ != ','; ++at_) {
      const char c = *at_;
      if (c >= '0' && c <= '9') {
        if (++count > 15) return false;
        digits = digits * 10 + (c - '0');
        if (decimals >= 0) ++decimals;
      } else if (c == '.' && decimals < 0) {
        decimals = 0;
      } else {
        return false;
      }
    }
    if (count == 0) return false;
    value = static_cast<double>(digits) / kPowers[decimals < 0 ? 0 : decimals];
    return true;
  }

  bool Whole(int64_t& value) {
    value = 0;
    int count = 0;
    for (; at_ != end_ && *at_ != ','; ++at_) {
      const char c = *at_;
      if (c < '0' || c > '9' || ++count > 16) return false;
      value = value * 10 + (c - '0');
    }
    return count > 0 && value <= kMaxVolume;
  }

  const char* at_;
  const char* end_;
};

}  // namespace

PriceFileError::PriceFileError(const std::string& path, size_t line, const std::string& problem)
    : Error(path + (line == 0 ? "" : " line " + std::to_string(line)) + ": " + problem),
      line_(line),
      problem_(problem) {}

std::string SymbolOfPath(std::string_view path) {
  if (const size_t dot = path.rfind('.'); dot != std::string_view::npos) {
    path = path.substr(0, dot);
  }
  if (const size_t slash = path.find_last_of("/\\"); slash != std::string_view::npos) {
    path = path.substr(slash + 1);
  }
  return std::string(path);
}

bool LoadStockFile(PriceSeries& s, const std::string& path, const platform::FolderNames* names) {
  s.stockFilePath = path;
  s.stockSymbol = SymbolOfPath(path);
  const std::optional<std::string> text =
      names ? names->ReadFileIfExists(path) : platform::ReadFileIfExists(path);
  if (!text) {
    s.barCount = 0;
    return false;
  }
  LoadStockText(s, *text, path);
  return true;
}

void LoadStockText(PriceSeries& s, std::string_view text, const std::string& path) {
  LineReader reader(text);
  SkipHeader(reader, path);
  s.barCount = 0;
  std::string_view line;
  std::array<std::string_view, 6> f;
  QuickDayLine::LastDate lastDate;
  while (reader.Next(line)) {
    const size_t n = reader.number();
    if (s.barCount == PriceSeries::kMaxBars) {
      Fail(path, n,
           "more than " + std::to_string(PriceSeries::kMaxBars) +
               " day lines; a price file holds at most " + std::to_string(PriceSeries::kMaxBars) +
               " days");
    }
    const int i = s.barCount;
    double date = 0;
    double prices[4];
    int64_t volume = 0;
    if (QuickDayLine(line).Read(lastDate, date, prices, volume)) {
      s.barDate[i] = date;
      s.barOpen[i] = prices[0];
      s.barHigh[i] = prices[1];
      s.barLow[i] = prices[2];
      s.barClose[i] = prices[3];
      s.barVolume[i] = volume;
      ++s.barCount;
      continue;
    }
    RequireFields<6>(SplitFields(line, f), path, n);
    const auto day = platform::ParseDate(f[0]);
    if (!day) Fail(path, n, "the date " + Quoted(f[0]) + " is not a date");
    volume = Volume(f[5], path, n);
    s.barDate[i] = *day;
    s.barOpen[i] = Price(f[1], 1, path, n);
    s.barHigh[i] = Price(f[2], 2, path, n);
    s.barLow[i] = Price(f[3], 3, path, n);
    s.barClose[i] = Price(f[4], 4, path, n);
    s.barVolume[i] = volume;
    ++s.barCount;
  }
  if (s.barCount == 0) throw PriceFileError(path, 0, "no day lines after the header line");

  ComputeSummaries(s);
}

void ComputeSummaries(PriceSeries& s) {
  int at = 0;
  s.highestHigh = platform::GetMax<double>(s.barHigh, s.barCount, at);
  s.lowestLow = platform::GetMin<double>(s.barLow, s.barCount);
  s.maxVolume = platform::GetMax<int64_t>(s.barVolume, s.barCount, at);
  s.newestDate = s.barDate[0];
  s.oldestDate = s.barDate[s.barCount - 1];
  ComputeAverageVolume(s);
}

void ComputeAverageVolume(PriceSeries& s) {
  // The 139 oldest bars over a divisor of 138: kept as the strategy was tuned with it.
  int64_t sum = 0;
  for (int i = s.barCount - 1; i >= s.barCount - 139 && i >= 0; --i) sum += s.barVolume[i];
  s.averageVolume = static_cast<double>(sum) / 138;
}

bool LoadIndexFile(PriceSeries& s, const std::string& path) {
  const std::optional<std::string> text = platform::ReadFileIfExists(path);
  if (!text) return false;
  s.rsAvailable = true;
  LoadIndexText(s, *text, path);
  return true;
}

void LoadIndexText(PriceSeries& s, std::string_view text, const std::string& path) {
  LineReader reader(text);
  SkipHeader(reader, path);
  std::string_view line;
  std::array<std::string_view, 5> f;
  for (int i = 0; reader.Next(line); ++i) {
    const size_t n = reader.number();
    if (i == PriceSeries::kMaxIndexCloses) {
      Fail(path, n,
           "more than " + std::to_string(PriceSeries::kMaxIndexCloses) +
               " day lines; an index file holds at most " +
               std::to_string(PriceSeries::kMaxIndexCloses) + " days");
    }
    RequireFields<5>(SplitFields(line, f), path, n);
    s.indexClose[i] = Price(f[4], 4, path, n);
  }
}

}  // namespace halvard::data
