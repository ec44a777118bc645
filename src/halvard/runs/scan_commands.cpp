#include "halvard/runs/scan_commands.h"

#include <array>

#include "halvard/data/watch_list.h"
#include "halvard/error.h"
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

// A scan of the stock database, into the cleared result text.
template <class Scan>
auto OverDatabase(Scan scan) {
  return [scan](Session& s, P&) {
    s.resultText.clear();
    scan(s.stockDb(Session::Access::kRead), s.config, s.resultText);
  };
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
       [](Session& s, P& p) { HighScan(s, p, 52, s.config.period52week); },
       Named(data::kFiftyTwoWeekHighListName)},
      {"xweek", "X High",
       [](Session& s, P& p) { HighScan(s, p, s.config.periodXQuantity, kXWeekWithinDays); },
       [](const Config& c) { return data::XWeekHighListName(c.periodXQuantity); }},
      {"unusual", "Unusual Volume",
       [](Session& s, P& p) { UnusualVolumeScan(s, p, s.config.periodBoxScan); },
       Named(data::kUnusualListName)},
      {"corvane", "Corvanes", [](Session& s, P& p) { CorvaneScan(s, p, s.config.periodBoxScan); },
       Named(data::kCorvaneListName)},
      {"inbox", "In a Box", [](Session& s, P& p) { InABoxScan(s, p); },
       Named(data::kInABoxListName)},
      {"buy", "Buy Signal Scan", [](Session& s, P& p) { BuySignalScan(s, p); },
       Named(data::kBuyListName)},
      {"belowstoploss", "Below Stop Loss", [](Session& s, P& p) { BelowStopLossScan(s, p); },
       Named(data::kBelowStopLossListName)},
      {"increasing-eps", "Increasing EPS Scan",
       OverDatabase([](StockDataStore& db, const Config& c, std::string& r) {
         if (db.LacksEstimates()) throw Error(kNeedsEstimates);
         db.IncreasingEPSScan(r, c.EPSRankScanPercentage);
       }),
       Named(data::kIncreasingEPSListName), false},
      {"increasing-rs", "Increasing RS Scan",
       OverDatabase([](StockDataStore& db, const Config& c, std::string& r) {
         db.IncreasingRSScan(r, c.RSRankScanPercentage);
       }),
       Named(data::kIncreasingRSListName), false},
      {"eps-rank", "Top EPS Rank Scan",
       OverDatabase([](StockDataStore& db, const Config& c, std::string& r) {
         db.EPSRankScan(c.EPSRankScanPercentage, r);
       }),
       Named(data::kTopEPSRankListName), false},
      {"rs-rank", "Top RS Rank Scan",
       OverDatabase([](StockDataStore& db, const Config& c, std::string& r) {
         db.RSRankScan(c.RSRankScanPercentage, r);
       }),
       Named(data::kTopRSRankListName), false},
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
