#include "halvard/screener/local_screen.h"

#include <memory>
#include <unordered_set>

#include "halvard/data/file_parser.h"
#include "halvard/data/price_folder.h"
#include "halvard/error.h"
#include "halvard/platform/files.h"
#include "halvard/platform/number_text.h"
#include "halvard/screener/criteria_table.h"

namespace halvard::screener {

bool PassesLocally(const ScreenCriteria& c, const LocalReadings& readings) {
  for (const TextCriterion& t : TextCriteria()) {
    const std::string& wanted = c.*t.field;
    if (t.local == nullptr || !IsSet(wanted)) continue;
    const std::optional<std::string>& have = readings.*t.local;
    if (!have ||
        !platform::EqualsIgnoreCase(platform::TrimSpaces(*have), platform::TrimSpaces(wanted))) {
      return false;
    }
  }
  for (const RangeCriterion& r : RangeCriteria()) {
    const Bounds& wanted = c.*r.field;
    if (r.local == nullptr || !wanted.isSet()) continue;
    const std::optional<double>& have = readings.*r.local;
    if (!have || !wanted.Admits(*have)) return false;
  }
  return true;
}

ScreenResult ScreenPriceFiles(const std::filesystem::path& stockFolder, const StockRows& rows,
                              const ScreenCriteria& c, platform::Progress& progress) {
  ScreenResult result;
  result.notApplied = LocallyUnanswered(c);
  const auto series = std::make_unique<data::PriceSeries>();  // too large for the stack
  const auto files = data::ListPriceFiles(stockFolder);
  const int n = static_cast<int>(files.size());
  std::unordered_set<std::string> kept;
  for (int i = 0; i < n; ++i) {
    const std::string symbol = data::SymbolOfFileName(files[i]);
    progress.Step(i, n, "Screening " + symbol);
    if (progress.Cancelled()) {
      result.cancelled = true;
      break;
    }
    if (symbol.starts_with('^')) continue;
    const std::string path = (stockFolder / files[i]).string();
    try {
      if (!data::LoadStockFile(*series, path)) {
        result.skipped.push_back(path + ": the file is gone");
        continue;
      }
    } catch (const Error& e) {
      result.skipped.emplace_back(e.what());
      continue;
    }
    if (PassesLocally(c, ReadLocally(*series, rows.Find(symbol)))) {
      // BRK.txt and BRK.B.txt both stand for BRK.
      if (kept.insert(symbol).second) result.symbols.push_back(symbol);
    }
  }
  return result;
}

}  // namespace halvard::screener
