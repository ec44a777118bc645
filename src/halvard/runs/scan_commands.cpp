#include "halvard/runs/scan_commands.h"

#include <array>

#include "halvard/error.h"
#include "halvard/runs/scan_list_names.h"
#include "halvard/runs/scans.h"

namespace halvard::runs {
namespace {

using P = platform::Progress;
using settings::Config;

// The X-week scan looks for the high within a fixed 115 days, whatever the settings say: the
// window is part of what users know the scan for.
constexpr int kXWeekWithinDays = 115;

auto Named(std::string_view name) {
  return [name](const Config&) { return std::string(name); };
}

// A scan of the stock database, opened for reading only.
template <class Scan>
auto OverDatabase(Scan scan) {
  return [scan](Session& s, P&) { return scan(s.stockDb(Session::Access::kRead), s.config); };
}

using fundamentals::StockDataStore;

constexpr const char* kNeedsEstimates =
    "the increasing-EPS scan needs a source with estimates: no stock in the database has one "
    "(the edgar service gives none); set [Services] Fundamentals=summary and download the "
    "company data again";

}  // namespace

std::span<const ScanCommand> ScanCommands() {
  static const std::array<ScanCommand, 11> commands = {{
      {"52week", "52 Week High",
       [](Session& s, P& p) { return HighScan(s, p, 52, s.config.period52week); },
       Named(kFiftyTwoWeekHighListName)},
      {"xweek", "X High",
       [](Session& s, P& p) { return HighScan(s, p, s.config.periodXQuantity, kXWeekWithinDays); },
       [](const Config& c) { return XWeekHighListName(c.periodXQuantity); }},
      {"unusual", "Unusual Volume",
       [](Session& s, P& p) { return UnusualVolumeScan(s, p, s.config.periodBoxScan); },
       Named(kUnusualListName)},
      {"corvane", "Corvanes",
       [](Session& s, P& p) { return CorvaneScan(s, p, s.config.periodBoxScan); },
       Named(kCorvaneListName)},
      {"inbox", "In a Box", [](Session& s, P& p) { return InABoxScan(s, p); },
       Named(kInABoxListName)},
      {"buy", "Buy Signal Scan", [](Session& s, P& p) { return BuySignalScan(s, p); },
       Named(kBuyListName)},
      {"belowstoploss", "Below Stop Loss", [](Session& s, P& p) { return BelowStopLossScan(s, p); },
       Named(kBelowStopLossListName)},
      {"increasing-eps", "Increasing EPS Scan",
       OverDatabase([](StockDataStore& db, const Config& c) {
         if (db.LacksEstimates()) throw Error(kNeedsEstimates);
         return db.IncreasingEPSScan(c.EPSRankScanPercentage);
       }),
       Named(kIncreasingEPSListName), false},
      {"increasing-rs", "Increasing RS Scan", OverDatabase([](StockDataStore& db, const Config& c) {
         return db.IncreasingRSScan(c.RSRankScanPercentage);
       }),
       Named(kIncreasingRSListName), false},
      {"eps-rank", "Top EPS Rank Scan", OverDatabase([](StockDataStore& db, const Config& c) {
         return db.EPSRankScan(c.EPSRankScanPercentage);
       }),
       Named(kTopEPSRankListName), false},
      {"rs-rank", "Top RS Rank Scan", OverDatabase([](StockDataStore& db, const Config& c) {
         return db.RSRankScan(c.RSRankScanPercentage);
       }),
       Named(kTopRSRankListName), false},
  }};
  return commands;
}

const ScanCommand* FindScanCommand(std::string_view key) {
  for (const ScanCommand& c : ScanCommands()) {
    if (c.key == key) return &c;
  }
  return nullptr;
}

}  // namespace halvard::runs
