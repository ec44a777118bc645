// The work every list run repeats for each symbol: load its price file, set the view, find the
// boxes and corvanes. A scan over a large list is this loop and little else, so symbols per
// second here is the speed a user feels. The market is generated once into the build folder
// and reused while its parameters stay the same.

#include <benchmark/benchmark.h>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "halvard/data/file_parser.h"
#include "halvard/data/watch_list.h"
#include "halvard/engine/back_tester.h"
#include "halvard/engine/stock_view.h"
#include "halvard/platform/files.h"
#include "halvard/settings/config.h"
#include "market_generator.h"
#include "runs_bench.h"

namespace halvard::bench {
namespace {

using engine::StockView;

struct Market {
  std::string folder;  // as the runs build paths: a string, "/" and the file name
  std::vector<std::string> symbols;
};

Market PrepareMarket() {
  const std::filesystem::path folder = HALVARD_BENCH_MARKET_DIR;
  if (EnsureMarket(folder, kDefaultSymbols, kDefaultBars, kDefaultSeed)) {
    std::cerr << "Generated " << kDefaultSymbols << " symbols x " << kDefaultBars << " bars in "
              << folder.string() << "\n";
  }
  return {folder.string(), data::ReadWatchList(folder / kMarketListName)};
}

std::string PricePath(const Market& market, const std::string& symbol) {
  return market.folder + "/" + symbol + ".txt";
}

void ReportSymbols(benchmark::State& state, size_t perIteration) {
  const double symbols =
      static_cast<double>(state.iterations()) * static_cast<double>(perIteration);
  state.counters["symbols/s"] = benchmark::Counter(symbols, benchmark::Counter::kIsRate);
}

// The whole per-symbol loop, in the six-month view (138 days).
void LoadAndBoxes(benchmark::State& state, const Market& market) {
  // One view for every symbol, as a run keeps one; on the heap, it is some 300 KB.
  const auto view = std::make_unique<StockView>();
  const int days = engine::ViewDayCount(4);
  for (auto _ : state) {
    for (const std::string& symbol : market.symbols) {
      if (!data::LoadStockFile(*view, PricePath(market, symbol))) {
        state.SkipWithError("a price file of the market is missing");
        return;
      }
      engine::SetViewDays(*view, days);
      engine::ComputeBoxes(*view, false);
    }
    benchmark::DoNotOptimize(view->boxCount);
  }
  ReportSymbols(state, market.symbols.size());
}

void LoadOnly(benchmark::State& state, const Market& market) {
  const auto view = std::make_unique<StockView>();
  for (auto _ : state) {
    for (const std::string& symbol : market.symbols) {
      if (!data::LoadStockFile(*view, PricePath(market, symbol))) {
        state.SkipWithError("a price file of the market is missing");
        return;
      }
    }
    benchmark::DoNotOptimize(view->barCount);
  }
  ReportSymbols(state, market.symbols.size());
}

// The file-system part of a load (find the file, read it whole) without the parsing, so that
// LoadStockFile minus this is the parser.
void ReadOnly(benchmark::State& state, const Market& market) {
  size_t bytes = 0;
  for (auto _ : state) {
    for (const std::string& symbol : market.symbols) {
      const auto path = platform::ResolvePath(PricePath(market, symbol));
      if (!path) {
        state.SkipWithError("a price file of the market is missing");
        return;
      }
      bytes += platform::ReadWholeFile(*path).size();
    }
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
  ReportSymbols(state, market.symbols.size());
}

// The finders alone on series already loaded. Several different series take turns so that the
// branch predictor cannot learn one series by heart.
void BoxesOnly(benchmark::State& state, const Market& market) {
  constexpr size_t kLoaded = 64;
  const int days = engine::ViewDayCount(static_cast<int>(state.range(0)));
  std::vector<std::unique_ptr<StockView>> views;
  for (size_t i = 0; i < kLoaded && i < market.symbols.size(); ++i) {
    views.push_back(std::make_unique<StockView>());
    if (!data::LoadStockFile(*views.back(), PricePath(market, market.symbols[i]))) {
      state.SkipWithError("a price file of the market is missing");
      return;
    }
    engine::SetViewDays(*views.back(), days);
  }
  size_t next = 0;
  for (auto _ : state) {
    StockView& view = *views[next];
    engine::ComputeBoxes(view, false);
    benchmark::DoNotOptimize(view.boxCount);
    next = next + 1 == views.size() ? 0 : next + 1;
  }
  ReportSymbols(state, 1);
}

// One backtest of a list run (result row, RS check, with or without unusual volume as the
// argument says) on series already loaded with their RS line and boxes, as a batch test runs it
// stock by stock. Without unusual volume nearly every series trades, so the log is longest.
void Backtests(benchmark::State& state, const Market& market) {
  constexpr size_t kLoaded = 64;
  settings::Config config;
  config.rsDayCurr = 10;
  config.useUnusualVolume = state.range(0) != 0;
  std::vector<std::unique_ptr<StockView>> views;
  for (size_t i = 0; i < kLoaded && i < market.symbols.size(); ++i) {
    auto view = std::make_unique<StockView>();
    data::LoadIndexFile(*view, market.folder + "/^IXIC.txt");
    if (!data::LoadStockFile(*view, PricePath(market, market.symbols[i]))) {
      state.SkipWithError("a price file of the market is missing");
      return;
    }
    engine::ComputeRSLine(*view);
    engine::SetViewDays(*view, engine::ViewDayCount(4));
    engine::ComputeBoxes(*view, true);
    views.push_back(std::move(view));
  }
  const engine::TradingSettings trading = engine::TradingSettingsOf(config);
  platform::StringSink log;
  platform::StringSink results;
  size_t next = 0;
  int64_t logBytes = 0;
  for (auto _ : state) {
    engine::BackTester tester(*views[next], log, results);
    tester.Backtest(
        trading, {.partOfListRun = true, .tryCorvanes = true, .tryBoxes = true, .rsEnabled = true});
    logBytes += static_cast<int64_t>(log.text().size());
    log.Clear();
    results.Clear();
    next = next + 1 == views.size() ? 0 : next + 1;
  }
  state.counters["backtests/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  state.counters["log bytes"] =
      benchmark::Counter(static_cast<double>(logBytes), benchmark::Counter::kAvgIterations);
}

}  // namespace
}  // namespace halvard::bench

int main(int argc, char** argv) {
  using namespace halvard::bench;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  try {
    const Market market = PrepareMarket();
    benchmark::RegisterBenchmark("LoadStockFile+ComputeBoxes/view:4", LoadAndBoxes, market)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("LoadStockFile", LoadOnly, market)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("ResolvePath+ReadWholeFile", ReadOnly, market)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("ComputeBoxes/view", BoxesOnly, market)
        ->Arg(4)
        ->Arg(5)
        ->Unit(benchmark::kNanosecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("Backtest/view:4/unusualVolume", Backtests, market)
        ->Arg(1)
        ->Arg(0)
        ->Unit(benchmark::kNanosecond)
        ->UseRealTime();
    RegisterRunBenchmarks(market.folder);
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception& e) {
    // A file of the market that does not load is a finding, not a crash.
    std::cerr << "halvard-bench: error: " << e.what() << "\n";
    return 1;
  }
  benchmark::Shutdown();
  return 0;
}
