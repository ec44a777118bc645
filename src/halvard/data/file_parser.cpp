#include "halvard/data/file_parser.h"

#include <cmath>

#include "halvard/error.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/line_reader.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/settings/config.h"

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

}  // namespace

PriceFileError::PriceFileError(const std::string& path, size_t line, const std::string& problem)
    : Error(path + (line == 0 ? "" : " line " + std::to_string(line)) + ": " + problem),
      line_(line),
      problem_(problem) {}

std::string GetSymbol(std::string_view path) {
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
  s.stockSymbol = GetSymbol(path);
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
  while (reader.Next(line)) {
    const size_t n = reader.number();
    if (s.barCount == PriceSeries::kMaxBars) {
      Fail(path, n,
           "more than " + std::to_string(PriceSeries::kMaxBars) +
               " day lines; a price file holds at most " + std::to_string(PriceSeries::kMaxBars) +
               " days");
    }
    RequireFields<6>(SplitFields(line, f), path, n);
    const auto date = platform::ParseDate(f[0]);
    if (!date) Fail(path, n, "the date " + Quoted(f[0]) + " is not a date");
    const int64_t volume = Volume(f[5], path, n);
    const int i = s.barCount;
    s.barDate[i] = *date;
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
  s.highestHigh = GetMax<double>(s.barHigh, s.barCount, at);
  s.lowestLow = GetMin<double>(s.barLow, s.barCount);
  s.maxVolume = GetMax<int64_t>(s.barVolume, s.barCount, at);
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

bool LoadIndexFile(PriceSeries& s, const std::string& path, settings::Config& config) {
  const std::optional<std::string> text = platform::ReadFileIfExists(path);
  if (!text) {
    config.showRS = false;
    return false;
  }
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
