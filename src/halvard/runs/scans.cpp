#include "halvard/runs/scans.h"

#include <cstdint>
#include <optional>

#include "halvard/data/file_parser.h"
#include "halvard/data/watch_list.h"
#include "halvard/platform/extremes.h"
#include "halvard/runs/stock_walk.h"

namespace halvard::runs {
namespace {

// The frame every scan shares; test decides on the loaded stock, after the backtest when one is
// asked for.
template <class Test>
ScanSymbols Scan(Session& s, platform::Progress& progress, Test&& test,
                 std::optional<engine::BacktestOptions> backtest = std::nullopt) {
  ScanSymbols passed;
  const int n = static_cast<int>(s.symbols.size());
  const engine::StockView& v = s.view();
  try {
    WalkStocks(s, {.before =
                       [&](int i) {
                         if (progress.Cancelled()) return false;
                         progress.Step(i, n, ShowProgress(i, n - 1));
                         return true;
                       },
                   .missing = [] {},
                   .loaded =
                       [&] {
                         if (test(v)) passed.push_back(v.stockSymbol);
                       },
                   .backtest = backtest});
  } catch (const Error& e) {
    throw ScanStopped(e, std::move(passed));
  }
  return passed;
}

// The engine in signal mode on the loaded stock, as the buy and stop-loss scans ask it: corvanes,
// then the boxes only when unusual volume is searched for, with the RS check as set.
engine::BacktestOptions SignalBacktest(const Session& s) {
  return {.partOfListRun = true,
          .signalMode = true,
          .tryCorvanes = true,
          .tryBoxes = s.config.useUnusualVolume,
          .rsEnabled = s.config.rsCheckEnabled};
}

}  // namespace

std::string ShowProgress(int index, int last) {
  return "Processing stock #" + std::to_string(index) + " of " + std::to_string(last);
}

ScanSymbols HighScan(Session& s, platform::Progress& progress, int weeks, int withinDays) {
  const int m = weeks * 5;
  if (m > engine::StockView::kMaxBars) {
    throw Error("a high of the last " + std::to_string(weeks) + " weeks needs " +
                std::to_string(m) + " days; a price file holds at most " +
                std::to_string(engine::StockView::kMaxBars));
  }
  return Scan(s, progress, [&](const engine::StockView& v) {
    int index = 0;
    platform::GetMax<double>(v.barHigh, m, index);
    return index <= withinDays;
  });
}

ScanSymbols CorvaneScan(Session& s, platform::Progress& progress, int maxAge) {
  return Scan(s, progress, [&](const engine::StockView& v) {
    const int c = v.corvaneCount;
    bool passed = false;
    for (int k = c - 1; c > 0 && k <= 0; ++k) {
      if (v.corvaneBreakDay[k] < maxAge) passed = true;
    }
    return passed;
  });
}

ScanSymbols InABoxScan(Session& s, platform::Progress& progress) {
  return Scan(s, progress, [](const engine::StockView& v) {
    return v.boxCount > 0 && v.boxEndDay[v.boxCount - 1] == -1;
  });
}

ScanSymbols UnusualVolumeScan(Session& s, platform::Progress& progress, int maxAge) {
  constexpr uint16_t kUnset = 65535;  // the position is 16 bits wide; unset reads as -1
  uint16_t p = kUnset;
  engine::BackTester& tester = s.tester();
  return Scan(s, progress, [&](const engine::StockView&) {
    const int dayCount = s.dayCount();
    bool found = false;
    for (;;) {
      if (p == static_cast<uint16_t>(dayCount)) break;
      if (p == kUnset) p = 0;
      engine::KeepSearchPercentage(s.config);  // the search below uses 0.25 for a setting of 0
      const int r = tester.FindUnusualVolume(dayCount - p, s.config.unusualVolumePercentage);
      p = static_cast<uint16_t>(dayCount - r);
      if (p <= dayCount - maxAge) continue;
      if (!found && tester.unusualVolumeFound) found = true;
    }
    return found;
  });
}

ScanSymbols BuySignalScan(Session& s, platform::Progress& progress) {
  return Scan(
      s, progress, [&](const engine::StockView&) { return s.tester().buyArmed; },
      SignalBacktest(s));
}

ScanSymbols BelowStopLossScan(Session& s, platform::Progress& progress) {
  return Scan(
      s, progress, [&](const engine::StockView&) { return s.tester().stopLossHit; },
      SignalBacktest(s));
}

const ScanSymbols& PassedBefore(const Error& error) {
  static const ScanSymbols kNone;
  const auto* stopped = dynamic_cast<const ScanStopped*>(&error);
  return stopped != nullptr ? stopped->passed() : kNone;
}

void SaveResultList(const ScanSymbols& symbols, const std::filesystem::path& file) {
  data::WriteWatchList(file, data::WatchListText(symbols));
}

}  // namespace halvard::runs
