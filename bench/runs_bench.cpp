#include "runs_bench.h"

#include <benchmark/benchmark.h>

#include "halvard/runs/batch_report.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/runs/scans.h"
#include "halvard/runs/session.h"
#include "market_generator.h"

namespace halvard::bench {
namespace {

// A session as the command line starts it on the market (index loaded, RS line on), with the
// market's list selected; its settings file is never written.
std::unique_ptr<runs::Session> OpenMarket(const std::string& folder) {
  auto s = std::make_unique<runs::Session>(settings::MRegistry(folder + "/unused-settings.ini"));
  s->config.StockFilePath = folder;
  s->config.IncFilePath = folder;
  s->StartUp();
  s->SelectList(std::string(kMarketListName));
  return s;
}

// The buy-signal scan over every symbol of the market: load, boxes, one signal-mode backtest.
void BuySignalScan(benchmark::State& state, const std::string& folder) {
  const auto s = OpenMarket(folder);
  platform::NoProgress quiet;
  for (auto _ : state) {
    runs::BuySignalScan(*s, quiet);
    s->log().Clear();
  }
  state.counters["symbols/s"] = benchmark::Counter(
      static_cast<double>(state.iterations() * s->symbols.size()), benchmark::Counter::kIsRate);
}

// A 10 x 10 batch sweep (stop loss 0.125 to 1.25, RS days 5 to 14) over the first 500 symbols,
// every switch on: 100 batches of 500 backtests, each writing its table and summary.
void BatchSweep(benchmark::State& state, const std::string& folder) {
  const auto s = OpenMarket(folder);
  s->symbols.resize(std::min<size_t>(s->symbols.size(), 500));
  platform::NoProgress quiet;
  size_t reportBytes = 0;
  for (auto _ : state) {
    runs::BatchReport batch(*s, quiet);
    runs::ParseStopLossLevels("0.125,1.25,0.125", batch.levels);
    runs::ParseRsLevels("5,14,1", batch.levels);
    batch.GoCommand({true, true, true});
    reportBytes = batch.text().size();
    s->log().Clear();
  }
  state.counters["backtests/s"] =
      benchmark::Counter(static_cast<double>(state.iterations() * 100 * s->symbols.size()),
                         benchmark::Counter::kIsRate);
  state.counters["report bytes"] = static_cast<double>(reportBytes);
}

// "Compute RS Rank" over the whole market: load every price file, its RS averages stored with
// two updates, then one rank update a stock. The database is a fresh one in the market folder
// with a row for every symbol, as after a company-data download.
void RankRS(benchmark::State& state, const std::string& folder) {
  const auto s = OpenMarket(folder);
  std::filesystem::remove(folder + "/stockdata.mdb");
  fundamentals::StockDataStore& db = s->stockDb();
  for (const std::string& symbol : s->symbols)
    db.SetStockData(symbol, "", 0, 0, "", "", "", 1, 0, 0);
  platform::NoProgress quiet;
  for (auto _ : state) runs::ComputeRSRankCommand(*s, quiet);
  state.counters["symbols/s"] = benchmark::Counter(
      static_cast<double>(state.iterations() * s->symbols.size()), benchmark::Counter::kIsRate);
}

}  // namespace

void RegisterRunBenchmarks(const std::string& folder) {
  benchmark::RegisterBenchmark("BuySignalScan/5000", BuySignalScan, folder)
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
  benchmark::RegisterBenchmark("BatchSweep/10x10/500", BatchSweep, folder)
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
  benchmark::RegisterBenchmark("RankRS/5000", RankRS, folder)
      ->Unit(benchmark::kMillisecond)
      ->UseRealTime();
}

}  // namespace halvard::bench
