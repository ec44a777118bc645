#include "halvard/runs/report_json.h"

#include "halvard/data/watch_list.h"
#include "halvard/runs/report_text.h"

namespace halvard::runs {
namespace {

template <class T>
JsonDocument OrNull(const std::optional<T>& value) {
  return value ? JsonDocument(*value) : JsonDocument(nullptr);
}

JsonDocument Strings(const std::vector<std::string>& texts) {
  JsonDocument out = JsonDocument::array();
  for (const std::string& text : texts) out.push_back(text);
  return out;
}

// The lines of a report kept with CR LF line ends.
std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const size_t end = text.find("\r\n");
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 2);
  }
  return lines;
}

JsonDocument StepJson(const BatchStep& step) {
  JsonDocument rows = JsonDocument::array();
  for (const BatchRow& r : step.rows) {
    JsonDocument row;
    row["symbol"] = r.symbol;
    row["catalyst"] = OrNull(r.catalyst);
    row["trades"] = OrNull(r.trades);
    row["profit"] = r.profit ? JsonDocument(MoneyField(*r.profit)) : JsonDocument(nullptr);
    row["status"] = r.status;
    rows.push_back(std::move(row));
  }
  JsonDocument out;
  out["stopLoss"] = GeneralField(step.stopLoss);
  out["rsDays"] = step.rsDays;
  out["rsCheck"] = step.rsCheck;
  out["unusualVolumeCheck"] = step.unusualVolume;
  out["rows"] = std::move(rows);
  out["finished"] = step.finished;
  // A step the run stopped inside has no summary.
  const auto summary = [&](JsonDocument value) { return step.finished ? value : nullptr; };
  out["profitMakingStocks"] = summary(step.profitMakingStocks);
  out["lossMakingStocks"] = summary(step.lossMakingStocks);
  out["totalTrades"] = summary(step.totalTrades);
  out["profitableTrades"] = summary(MoneyField(step.profitableTrades));
  out["losingTrades"] = summary(MoneyField(step.losingTrades));
  out["totalProfit"] = summary(MoneyField(step.totalProfit));
  return out;
}

}  // namespace

JsonDocument ScanJson(const ScanCommand& scan, const Session& session, const ScanSymbols& passed) {
  JsonDocument out;
  out["scan"] = std::string(scan.key);
  out["caption"] = std::string(scan.caption);
  out["list"] = scan.overList ? JsonDocument(session.listName) : JsonDocument(nullptr);
  out["symbols"] = Strings(passed);
  return out;
}

JsonDocument BatchJson(const BatchResult& result) {
  JsonDocument sweeps = JsonDocument::array();
  for (const BatchSweep& sweep : result.sweeps) {
    JsonDocument steps = JsonDocument::array();
    for (const BatchStep& step : sweep.steps) steps.push_back(StepJson(step));
    JsonDocument s;
    s["varies"] = sweep.varies;
    s["steps"] = std::move(steps);
    s["finished"] = sweep.finished;
    s["maximumProfit"] = sweep.finished ? JsonDocument(GeneralField(sweep.maximumProfit)) : nullptr;
    s["bestStopLoss"] =
        sweep.bestStopLoss ? JsonDocument(GeneralField(*sweep.bestStopLoss)) : nullptr;
    s["bestRsDays"] = OrNull(sweep.bestRsDays);
    sweeps.push_back(std::move(s));
  }
  JsonDocument out;
  out["list"] = result.list;
  out["buyMode"] = BuyModeName(result.buyMode);
  out["sweeps"] = std::move(sweeps);
  return out;
}

JsonDocument WalkForwardJson(const WalkForwardResult& result) {
  JsonDocument skipped = JsonDocument::array();
  for (const WalkForwardSkip& s : result.skipped) {
    skipped.push_back({{"symbol", s.symbol}, {"days", s.days}, {"spanDays", s.spanDays}});
  }
  JsonDocument folds = JsonDocument::array();
  for (const WalkForwardFold& f : result.foldRows) {
    folds.push_back({{"fold", f.fold},
                     {"stopLoss", f.stopLoss ? JsonDocument(GeneralField(*f.stopLoss)) : nullptr},
                     {"rsDays", OrNull(f.rsDays)},
                     {"inSample", MoneyField(f.inSample)},
                     {"outOfSample", MoneyField(f.outOfSample)}});
  }
  JsonDocument out;
  out["list"] = result.list;
  out["buyMode"] = BuyModeName(result.buyMode);
  out["folds"] = result.folds;
  out["viewDays"] = result.viewDays;
  out["missing"] = Strings(result.missing);
  out["skipped"] = std::move(skipped);
  out["finished"] = result.finished;
  out["symbolsTested"] = result.symbolsTested;
  out["foldRows"] = std::move(folds);
  out["outOfSampleTotal"] =
      result.finished ? JsonDocument(MoneyField(result.outOfSampleTotal)) : JsonDocument(nullptr);
  out["bestProfit"] =
      result.bestProfit ? JsonDocument(MoneyField(*result.bestProfit)) : JsonDocument(nullptr);
  out["bestStopLoss"] =
      result.bestStopLoss ? JsonDocument(GeneralField(*result.bestStopLoss)) : nullptr;
  out["bestRsDays"] = OrNull(result.bestRsDays);
  return out;
}

JsonDocument BacktestJson(Session& session, bool signalMode, int code) {
  const engine::BackTester& t = session.tester();
  JsonDocument fills = JsonDocument::array();
  for (const engine::Fill& f : t.fills) {
    fills.push_back({{"date", DateField(f.date)},
                     {"action", f.bought ? "buy" : "sell"},
                     {"shares", f.shares},
                     {"price", GeneralField(f.price)}});
  }
  JsonDocument out;
  out["symbol"] = session.view().stockSymbol;
  out["buyMode"] = BuyModeName(session.config.buyMode);
  out["signalMode"] = signalMode;
  out["catalyst"] = code == 2   ? JsonDocument("Corvane")
                    : code == 0 ? JsonDocument(nullptr)
                                : JsonDocument("Pyramiding Boxes");
  out["trades"] = t.tradeCount;
  out["profit"] = MoneyField(t.totalProfit);
  out["sharesHeld"] = t.sharesHeld;
  out["fills"] = std::move(fills);
  out["buySignal"] = t.buyArmed;
  out["buySignalDate"] = t.buyArmed ? DateField(t.buyArmedDate) : nullptr;
  out["stopLossHit"] = t.stopLossHit;
  out["stopBuy"] = GeneralField(t.lastStopBuy);
  out["stopLoss"] = GeneralField(t.lastStopLoss);
  out["log"] = Strings(Lines(session.log().text()));
  return out;
}

JsonDocument CheckJson(const std::vector<data::CheckedFile>& files) {
  JsonDocument list = JsonDocument::array();
  int checked = 0, failing = 0, fixed = 0, missing = 0;
  for (const data::CheckedFile& f : files) {
    JsonDocument file;
    file["file"] = f.name;
    file["missing"] = f.missing;
    file["loads"] = !f.missing && !f.problem;
    file["line"] = f.problem && f.problem->line() != 0 ? JsonDocument(f.problem->line()) : nullptr;
    file["problem"] = f.problem ? JsonDocument(f.problem->problem()) : nullptr;
    file["fixed"] = f.fixed.empty() ? JsonDocument(nullptr) : JsonDocument(f.fixed);
    list.push_back(std::move(file));
    checked += f.missing ? 0 : 1;
    failing += f.problem ? 1 : 0;
    fixed += f.fixed.empty() ? 0 : 1;
    missing += f.missing ? 1 : 0;
  }
  JsonDocument out;
  out["files"] = std::move(list);
  out["checked"] = checked;
  out["notLoading"] = failing;
  out["fixed"] = fixed;
  out["missing"] = missing;
  return out;
}

JsonDocument DownloadJson(const DownloadRequest& request,
                          const std::vector<data::Downloader::Outcome>& outcomes,
                          const std::vector<ListDownload>& lists) {
  JsonDocument symbols = JsonDocument::array();
  for (const auto& o : outcomes) {
    symbols.push_back(
        {{"symbol", o.symbol},
         {"stored", o.failure.empty()},
         {"error", o.failure.empty() ? JsonDocument(nullptr) : JsonDocument(o.failure)}});
  }
  JsonDocument out;
  out["from"] = DateField(request.from);
  out["to"] = DateField(request.to);
  out["skipExisting"] = request.skipExisting;
  out["symbols"] = std::move(symbols);
  if (!lists.empty()) {
    out["lists"] = JsonDocument::array();
    for (const ListDownload& l : lists) {
      out["lists"].push_back(
          {{"list", l.list}, {"done", l.answer.done}, {"failed", Strings(l.answer.failedSymbols)}});
    }
  }
  return out;
}

JsonDocument StockInfoJson(const std::string& symbol, const StockInfo& info) {
  JsonDocument out;
  out["symbol"] = symbol;
  out["name"] = info.name.empty() ? JsonDocument(nullptr) : JsonDocument(info.name);
  out["exchange"] = info.exchange;
  out["industry"] = info.industry;
  out["summary"] = info.summary;
  out["epsRank"] = GeneralField(info.epsRank);
  out["rsRank"] = GeneralField(info.rsRank);
  return out;
}

JsonDocument SettingsJson(const std::vector<settings::SettingText>& settings,
                          const std::vector<settings::ServiceText>& services) {
  JsonDocument list = JsonDocument::array();
  for (const auto& s : settings) {
    list.push_back({{"section", s.section}, {"name", s.name}, {"value", s.text}});
  }
  for (const auto& s : services) {
    list.push_back({{"section", std::string(settings::kServicesSection)},
                    {"name", s.name},
                    {"value", s.text}});
  }
  JsonDocument out;
  out["settings"] = std::move(list);
  return out;
}

JsonDocument SetOpsJson(const std::vector<tools::SetOpRecord>& records) {
  JsonDocument list = JsonDocument::array();
  int number = 0;
  for (const auto& r : records) {
    list.push_back({{"number", ++number},
                    {"first", r.firstList},
                    {"operation", r.operation},
                    {"second", r.secondList},
                    {"result", r.result}});
  }
  JsonDocument out;
  out["combinations"] = std::move(list);
  return out;
}

JsonDocument RankJson(const std::string& which, const std::vector<std::string>& skipped) {
  JsonDocument out;
  out["rank"] = which;
  out["skipped"] = Strings(skipped);
  return out;
}

}  // namespace halvard::runs
