#include "market_generator.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string_view>

namespace halvard::bench {
namespace {

namespace fs = std::filesystem;

// Everything below is integer arithmetic on std::mt19937_64, whose output the standard fixes.
// The standard distributions and floating-point walks are avoided on purpose: their results
// differ between libraries and between compilers that fuse multiply-adds.
using Random = std::mt19937_64;

constexpr int kMaxSymbols = 1'000'000;
constexpr int kMaxBars = 1001;    // what a price file may hold
constexpr int kStampVersion = 1;  // raise when the output for a seed changes
constexpr std::string_view kStampName = "market.stamp";
constexpr std::string_view kIndexName = "^IXIC.txt";
constexpr std::string_view kHeader = "Date,Open,High,Low,Close,Volume,Adj Close\r\n";
constexpr int64_t kMillion = 1'000'000;

// Walk prices are kept in ten-thousandths of a dollar so that small moves of cheap stocks are
// not lost to rounding; the files show cents.
constexpr int64_t kTicksPerDollar = 10'000;
constexpr int64_t kTicksPerCent = 100;

struct Profile {
  int64_t startTicks;
  int64_t volatilityPpm;  // standard deviation of a day's move, in parts per million
  int64_t driftPpm;       // mean of a day's move
  int64_t baseVolume;
  int64_t minVolume;
  int64_t maxVolume;
};

struct Bar {  // prices in cents
  int64_t open;
  int64_t high;
  int64_t low;
  int64_t close;
  int64_t volume;
};

// splitmix64: spreads the seed and the symbol number over the whole state, so neighbouring
// symbols and neighbouring seeds give unrelated walks.
uint64_t Mix(uint64_t x) {
  x += 0x9E3779B97F4A7C15ull;
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
  return x ^ (x >> 31);
}

int64_t Below(Random& rng, int64_t n) {
  // The modulo bias is below 2^-40 for every n used here.
  return static_cast<int64_t>(rng() % static_cast<uint64_t>(n));
}

// A bell-shaped draw with mean 0 and standard deviation close to sd: the sum of four uniform
// draws on [-a, a] with a = sd * sqrt(3) / 2.
int64_t Bell(Random& rng, int64_t sd) {
  const int64_t a = sd * 866 / 1000;
  if (a <= 0) return 0;
  int64_t sum = 0;
  for (int k = 0; k < 4; ++k) sum += Below(rng, 2 * a + 1) - a;
  return sum;
}

int64_t Abs(int64_t x) {
  return x < 0 ? -x : x;
}

// value * (1 + ppm / 10^6), rounded to the nearest unit.
int64_t Scale(int64_t value, int64_t ppm) {
  const int64_t product = value * (kMillion + ppm);
  return (product + kMillion / 2) / kMillion;
}

int64_t Cents(int64_t ticks) {
  return std::max<int64_t>(1, (ticks + kTicksPerCent / 2) / kTicksPerCent);
}

Profile StockProfile(Random& rng) {
  Profile p;
  // $2 to about $250, more of them cheap than dear, as on a real exchange.
  p.startTicks = ((2 + Below(rng, 60)) << Below(rng, 3)) * kTicksPerDollar + Below(rng, 10'000);
  p.volatilityPpm = 8'000 + Below(rng, 27'000);
  p.driftPpm = Below(rng, 1'501) - 600;
  p.baseVolume = (20'000 << Below(rng, 10)) * (1'000 + Below(rng, 1'000)) / 1'000;
  p.minVolume = 100;
  p.maxVolume = INT64_MAX / 4;
  return p;
}

Profile IndexProfile(Random& rng) {
  Profile p;
  p.startTicks = (4'500 + Below(rng, 1'000)) * kTicksPerDollar;
  p.volatilityPpm = 9'000;
  p.driftPpm = 300;
  // Index volumes pass 2^31 as the real composite's do, so loaders keep meeting that case.
  p.baseVolume = 2'400'000'000;
  p.minVolume = 1'500'000'000;
  p.maxVolume = 4'000'000'000;
  return p;
}

// A day's move that keeps the walk within a factor of 8 of where it started: a stock that would
// sink to a fraction of a cent or climb past any real price turns back instead.
int64_t Move(Random& rng, const Profile& p, int64_t ticks) {
  int64_t ppm = p.driftPpm + Bell(rng, p.volatilityPpm);
  if ((ppm < 0 && ticks < p.startTicks / 8) || (ppm > 0 && ticks > p.startTicks * 8)) ppm = -ppm;
  return ppm;
}

int64_t Volume(Random& rng, const Profile& p) {
  int64_t perMille = std::max<int64_t>(300, 1'000 + Bell(rng, 250));
  // About one day in forty trades two to four times its usual volume: what the unusual-volume
  // search looks for.
  if (Below(rng, 40) == 0) perMille = perMille * (2'000 + Below(rng, 2'001)) / 1'000;
  return std::clamp(p.baseVolume * perMille / 1'000, p.minVolume, p.maxVolume);
}

// The bars of one file, oldest first.
std::vector<Bar> Walk(Random& rng, const Profile& p, int bars) {
  std::vector<Bar> out;
  out.reserve(static_cast<size_t>(bars));
  int64_t closeTicks = p.startTicks;
  for (int i = 0; i < bars; ++i) {
    const int64_t openTicks = Scale(closeTicks, Bell(rng, p.volatilityPpm / 4));
    closeTicks = Scale(openTicks, Move(rng, p, openTicks));
    Bar b;
    b.open = Cents(openTicks);
    b.close = Cents(closeTicks);
    const int64_t upper = std::max(b.open, b.close);
    const int64_t lower = std::min(b.open, b.close);
    b.high = upper + (upper * Abs(Bell(rng, p.volatilityPpm / 2)) + kMillion / 2) / kMillion;
    b.low = lower - (lower * Abs(Bell(rng, p.volatilityPpm / 2)) + kMillion / 2) / kMillion;
    b.low = std::max<int64_t>(1, b.low);
    b.volume = Volume(rng, p);
    out.push_back(b);
  }
  return out;
}

void AppendWhole(std::string& out, int64_t value) {
  char buffer[24];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
  out.append(buffer, end);
}

void AppendTwoDigits(std::string& out, int64_t value) {
  out += static_cast<char>('0' + value / 10);
  out += static_cast<char>('0' + value % 10);
}

void AppendCents(std::string& out, int64_t cents) {
  AppendWhole(out, cents / 100);
  out += '.';
  AppendTwoDigits(out, cents % 100);
}

// The trading days of every file, newest first, as yyyy-mm-dd: weekdays only.
std::vector<std::string> TradingDays(int bars) {
  using namespace std::chrono;
  std::vector<std::string> out;
  out.reserve(static_cast<size_t>(bars));
  sys_days day =
      year_month_day{year{kNewestYear}, month{kNewestMonth}, std::chrono::day{kNewestDay}};
  while (static_cast<int>(out.size()) < bars) {
    const weekday w{day};
    if (w != Saturday && w != Sunday) {
      const year_month_day ymd{day};
      std::string text;
      AppendWhole(text, static_cast<int>(ymd.year()));
      text += '-';
      AppendTwoDigits(text, static_cast<unsigned>(ymd.month()));
      text += '-';
      AppendTwoDigits(text, static_cast<unsigned>(ymd.day()));
      out.push_back(std::move(text));
    }
    day -= days{1};
  }
  return out;
}

std::string PriceFileText(const std::vector<Bar>& oldestFirst,
                          const std::vector<std::string>& days) {
  std::string out(kHeader);
  out.reserve(kHeader.size() + days.size() * 64);
  const size_t n = oldestFirst.size();
  for (size_t i = 0; i < n; ++i) {
    const Bar& b = oldestFirst[n - 1 - i];
    out += days[i];
    for (const int64_t price : {b.open, b.high, b.low, b.close}) {
      out += ',';
      AppendCents(out, price);
    }
    out += ',';
    AppendWhole(out, b.volume);
    out += ',';
    AppendCents(out, b.close);  // no dividends or splits: adjusted equals close
    out += "\r\n";
  }
  return out;
}

void WriteFile(const fs::path& path, std::string_view content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.close();
  if (!out) throw std::runtime_error(path.string() + ": cannot write");
}

std::string StampText(int symbols, int bars, uint64_t seed) {
  return "version=" + std::to_string(kStampVersion) + "\r\nsymbols=" + std::to_string(symbols) +
         "\r\nbars=" + std::to_string(bars) + "\r\nseed=" + std::to_string(seed) + "\r\n";
}

std::string ReadSmallFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::string text;
  char buffer[256];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) text.append(buffer, in.gcount());
  return text;
}

// Each file has its own stream, so a symbol's prices depend only on the seed and its number,
// not on how many symbols are generated beside it.
Random StreamFor(uint64_t seed, int64_t number) {
  return Random(Mix(Mix(seed) ^ static_cast<uint64_t>(number)));
}

}  // namespace

std::string SymbolName(int number, int symbols) {
  const std::string digits = std::to_string(number);
  const size_t width = std::max<size_t>(4, std::to_string(std::max(symbols - 1, 0)).size());
  std::string name = "S";
  name.append(width > digits.size() ? width - digits.size() : 0, '0');
  name += digits;
  return name;
}

std::vector<std::string> SymbolNames(int symbols) {
  std::vector<std::string> out;
  out.reserve(static_cast<size_t>(std::max(symbols, 0)));
  for (int i = 0; i < symbols; ++i) out.push_back(SymbolName(i, symbols));
  return out;
}

void GenerateMarket(const fs::path& folder, int symbols, int bars, uint64_t seed) {
  if (symbols < 1 || symbols > kMaxSymbols) {
    throw std::invalid_argument("symbols must be from 1 to " + std::to_string(kMaxSymbols));
  }
  if (bars < 1 || bars > kMaxBars) {
    throw std::invalid_argument("bars must be from 1 to " + std::to_string(kMaxBars));
  }
  fs::create_directories(folder);
  // Gone first, written last: a run cut short is never taken for a complete market.
  fs::remove(folder / kStampName);

  const std::vector<std::string> days = TradingDays(bars);
  const std::vector<std::string> names = SymbolNames(symbols);
  std::string list;
  for (int i = 0; i < symbols; ++i) {
    Random rng = StreamFor(seed, i);
    const Profile profile = StockProfile(rng);
    WriteFile(folder / (names[i] + ".txt"), PriceFileText(Walk(rng, profile, bars), days));
    list += names[i] + "\r\n";
  }
  Random rng = StreamFor(seed, -1);
  const Profile profile = IndexProfile(rng);
  WriteFile(folder / kIndexName, PriceFileText(Walk(rng, profile, bars), days));
  WriteFile(folder / kMarketListName, list + "\r\n");
  WriteFile(folder / kStampName, StampText(symbols, bars, seed));
}

bool EnsureMarket(const fs::path& folder, int symbols, int bars, uint64_t seed) {
  const fs::path stamp = folder / kStampName;
  if (fs::exists(stamp) && ReadSmallFile(stamp) == StampText(symbols, bars, seed)) return false;
  GenerateMarket(folder, symbols, bars, seed);
  return true;
}

}  // namespace halvard::bench
