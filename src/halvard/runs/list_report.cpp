#include "halvard/runs/list_report.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "halvard/platform/folder_names.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/stock_walk.h"

namespace halvard::runs {
namespace {

// "i+1/n", the count the windows show, made without an allocation: a sweep shows one for every
// stock of every pass.
class StockCount {
 public:
  std::string_view Of(int i, int n) {
    char* const last = text_.data() + text_.size();
    char* end = std::to_chars(text_.data(), last, i + 1).ptr;
    *end++ = '/';
    end = std::to_chars(end, last, n).ptr;
    return {text_.data(), static_cast<size_t>(end - text_.data())};
  }

 private:
  std::array<char, 24> text_{};  // two ints and a slash
};

}  // namespace

ListReport::ListReport(Session& session, platform::Progress& progress)
    : levels(DefaultLevels(session.config)), s_(session), progress_(progress) {}

void ListReport::Line(std::string_view text) {
  report_.Append(text);
  report_.Append("\r\n");
}

std::string ListReport::StopLossRange() const {
  using platform::FormatGeneral;
  return RangeText(FormatGeneral(levels.stopLossStart), FormatGeneral(levels.stopLossStop),
                   FormatGeneral(levels.stopLossStep));
}

std::string ListReport::RsRange() const {
  return RangeText(std::to_string(levels.rsStart), std::to_string(levels.rsStop),
                   std::to_string(levels.rsStep));
}

ListReport::PassPlan::~PassPlan() {
  report_.plan_.clear();
  report_.records_.clear();
  report_.outcomes_ = {};
}

ListReport::PassPlan ListReport::PlanPasses(std::vector<engine::TradingSettings> passes) {
  plan_ = std::move(passes);
  walked_ = 0;
  groupStart_ = groupEnd_ = 0;
  grouped_ = s_.config.enableGraphUpdate;
  return PassPlan(*this);
}

size_t ListReport::GroupSize(size_t n) const {
  if (!s_.tester().keepsLog() || n == 0) return groupPasses_;
  return std::min(groupPasses_, 1 + kLoggedOutcomes / n);
}

std::vector<engine::TradingSettings> ListReport::PassesAt(const engine::TradingSettings& base,
                                                          const std::vector<double>& stopLosses,
                                                          const std::vector<int>& rsDays) {
  std::vector<engine::TradingSettings> all;
  engine::TradingSettings pass = base;
  for (const double stopLoss : stopLosses) {
    pass.stopLossLimit = stopLoss;
    for (const int days : rsDays) {
      pass.rsDays = days;
      all.push_back(pass);
    }
  }
  return all;
}

bool ListReport::ForEachStock(const std::function<void()>& tested,
                              const std::function<void()>& notLoaded,
                              const std::optional<engine::BacktestOptions>& backtest,
                              const std::optional<engine::TradingSettings>& trading) {
  const engine::StockView& v = s_.view();
  const int n = static_cast<int>(s_.symbols.size());
  // Once the files are parsed and kept, a stock's backtest costs less than handing it between
  // threads: the later levels of a sweep run on this one (unless a walk backtests a group).
  const bool cached = prices_.keptBars() > 0;
  StockCount count;
  StockWalk walk{.before =
                     [&](int i) {
                       if (progress_.Cancelled()) return false;
                       progress_.Step(i, n, count.Of(i, n));
                       return true;
                     },
                 .missing =
                     [&] {
                       Line(v.stockSymbol + "\tError opening stock file ");
                       if (notLoaded) notLoaded();
                     },
                 .loaded = tested,
                 .backtest = backtest,
                 .trading = trading,
                 .cache = &prices_,
                 .jobs = cached ? 1 : 0};
  if (!backtest || walked_ >= plan_.size()) return WalkStocks(s_, walk);
  const size_t pass = walked_++;
  if (!grouped_) return WalkStocks(s_, walk);
  if (pass > groupStart_ && pass < groupEnd_) return Replay(pass - groupStart_ - 1, walk);

  // The first pass of a group: the walk records every stock with the group's other outcomes.
  groupStart_ = pass;
  groupEnd_ = std::min(pass + GroupSize(static_cast<size_t>(n)), plan_.size());
  records_.resize(static_cast<size_t>(n));
  walk.also.assign(plan_.begin() + static_cast<ptrdiff_t>(pass) + 1,
                   plan_.begin() + static_cast<ptrdiff_t>(groupEnd_));
  outcomes_.Reset(records_.size(), walk.also.size());
  walk.alsoInto = &outcomes_;
  walk.jobs = 0;
  StockRecord* record = nullptr;
  const auto keep = [&](bool found) {
    record->found = found;
    record->path = v.stockFilePath;
    record->symbol = v.stockSymbol;
    record->barCount = v.barCount;
    record->newestDate = v.newestDate;
  };
  walk.before = [&, before = walk.before](int i) {
    record = &records_[static_cast<size_t>(i)];
    return before(i);
  };
  walk.missing = [&, missing = walk.missing] {
    keep(false);
    missing();
  };
  walk.loaded = [&] {
    keep(true);
    tested();
  };
  const bool finished = WalkStocks(s_, walk);
  // A pass starts from what the one before it left in the view: when the first stock that loads
  // does not cover what the engine reads, the later passes may see it otherwise than this one.
  const int read = engine::BackTester::DaysRead(v);
  for (const StockRecord& r : records_) {
    if (!r.found) continue;
    if (r.barCount < read) grouped_ = false;
    break;
  }
  if (!grouped_) groupEnd_ = 0;
  return finished;
}

bool ListReport::Replay(size_t k, const StockWalk& walk) {
  engine::StockView& v = s_.view();
  engine::BackTester& tester = s_.tester();
  const bool rows = walk.backtest->partOfListRun && !walk.backtest->signalMode;
  const int n = static_cast<int>(records_.size());
  for (int i = 0; i < n; ++i) {
    if (!walk.before(i)) {
      RestoreView(i - 1);
      return false;
    }
    const StockRecord& r = records_[static_cast<size_t>(i)];
    v.stockFilePath = r.path;
    v.stockSymbol = r.symbol;
    if (!r.found) {
      v.barCount = 0;
      walk.missing();
      continue;
    }
    v.barCount = r.barCount;
    v.newestDate = r.newestDate;
    const auto stock = static_cast<size_t>(i);
    const PassOutcome& o = outcomes_.at(stock, k);
    s_.log().Append(outcomes_.Log(stock, k));
    if (o.unusualVolumeFound) tester.unusualVolumeFound = true;
    tester.unusualVolumeSearched = o.unusualVolumeSearched;
    if (o.unusualVolumeSearched) engine::KeepSearchPercentage(s_.config);
    tester.SetRunState(o.state);
    if (o.error) {
      RestoreView(i);
      std::rethrow_exception(o.error);
    }
    if (rows) {
      tester.results().Append(outcomes_.Row(stock, k));
      tester.AddToTotals();
    }
    walk.loaded();
  }
  return true;
}

void ListReport::RestoreView(int last) {
  engine::StockView& v = s_.view();
  // From the last stock up to it whose history covers what the finders and the engine read: it
  // overwrites all of that, whatever was in the view before.
  const int read = engine::BackTester::DaysRead(v);
  int from = last;
  while (from >= 0) {
    const StockRecord& r = records_[static_cast<size_t>(from)];
    if (r.found && r.barCount >= read) break;
    --from;
  }
  if (from < 0) return;  // nothing loaded up to last: its marks are in place
  const platform::FolderNames names(s_.config.StockFilePath);
  for (int j = from; j <= last; ++j) {
    const StockRecord& r = records_[static_cast<size_t>(j)];
    v.stockFilePath = r.path;
    v.stockSymbol = r.symbol;
    v.barCount = 0;
    if (!r.found) continue;
    prices_.Load(v, s_.StockPath(s_.symbols[static_cast<size_t>(j)]), &names);
    engine::ComputeBoxes(v, true);
  }
}

}  // namespace halvard::runs
