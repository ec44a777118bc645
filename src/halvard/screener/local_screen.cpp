#include "halvard/screener/local_screen.h"

#include <memory>
#include <unordered_set>

#include "halvard/data/file_parser.h"
#include "halvard/data/price_folder.h"
#include "halvard/error.h"
#include "halvard/platform/ordered_work.h"
#include "halvard/platform/text.h"
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

namespace {

// What screening one price file found.
struct Screened {
  enum class What { kIndex, kSkipped, kPassed, kFailed } what = What::kIndex;
  std::string skipped;  // the message of a file that does not load
};

Screened ScreenFile(const std::filesystem::path& stockFolder, const std::string& file,
                    const StockRows& rows, const ScreenCriteria& c, data::PriceSeries& series) {
  const std::string symbol = data::SymbolOfFileName(file);
  if (symbol.starts_with('^')) return {};
  const std::string path = (stockFolder / file).string();
  try {
    if (!data::LoadStockFile(series, path)) {
      return {Screened::What::kSkipped, path + ": the file is gone"};
    }
  } catch (const Error& e) {
    return {Screened::What::kSkipped, e.what()};
  }
  const bool passed = PassesLocally(c, ReadLocally(series, rows.Find(symbol)));
  return {passed ? Screened::What::kPassed : Screened::What::kFailed, {}};
}

}  // namespace

ScreenResult ScreenPriceFiles(const std::filesystem::path& stockFolder, const StockRows& rows,
                              const ScreenCriteria& c, platform::Progress& progress, int jobs) {
  ScreenResult result;
  result.notApplied = LocallyUnanswered(c);
  const auto files = data::ListPriceFiles(stockFolder);
  const int n = static_cast<int>(files.size());
  std::unordered_set<std::string> kept;
  // Each file is screened on its own (a series of its own, read only within its days), so the
  // threads screen files side by side and the findings are taken up in the folder's order.
  const auto take = [&](int i, const Screened& screened) {
    const std::string symbol = data::SymbolOfFileName(files[static_cast<size_t>(i)]);
    progress.Step(i, n, "Screening " + symbol);
    if (progress.Cancelled()) {
      result.cancelled = true;
      return false;
    }
    if (screened.what == Screened::What::kSkipped) result.skipped.push_back(screened.skipped);
    // BRK.txt and BRK.B.txt both stand for BRK.
    if (screened.what == Screened::What::kPassed && kept.insert(symbol).second) {
      result.symbols.push_back(symbol);
    }
    return true;
  };
  const auto screen = [&](data::PriceSeries& series, int i) {
    return ScreenFile(stockFolder, files[static_cast<size_t>(i)], rows, c, series);
  };
  const auto newSeries = [] { return std::make_unique<data::PriceSeries>(); };
  if (jobs <= 1 || n <= 1) {
    const auto series = newSeries();  // too large for the stack
    for (int i = 0; i < n; ++i) {
      if (!take(i, screen(*series, i))) break;
    }
    return result;
  }
  platform::TakeInOrder<Screened>(
      n, jobs, newSeries,
      [&](data::PriceSeries& series, int i, Screened& screened) { screened = screen(series, i); },
      [&](int i, Screened* screened) {
        return take(i, screened != nullptr ? *screened : screen(*newSeries(), i));
      });
  return result;
}

}  // namespace halvard::screener
