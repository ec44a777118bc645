#include "halvard/runs/live_json.h"

#include "halvard/error.h"
#include "halvard/runs/json_fields.h"
#include "halvard/runs/live_json_value.h"

namespace halvard::runs {
namespace {

using nlohmann::ordered_json;

ordered_json LiveRangeJson(auto start, auto stop, auto step) {
  return {{"start", start}, {"stop", stop}, {"step", step}};
}

ordered_json LiveRowJson(const LiveRow& row) {
  ordered_json out{{"symbol", row.symbol}};
  switch (row.action) {
    case LiveRow::Action::kNoPrices:
      out["action"] = "Error";  // "Error opening stock file "
      return out;
    case LiveRow::Action::kSkip:
      out["action"] = "Skip";
      out["newestDate"] = IsoDate(row.newestDate);
      return out;
    case LiveRow::Action::kBuy:
      break;
  }
  out["action"] = "Buy";
  out["newestDate"] = IsoDate(row.newestDate);
  out["signalDate"] = IsoDate(row.signalDate);
  out["stopBuy"] = row.stopBuy;
  out["stopLoss"] = row.stopLoss;
  return out;
}

ordered_json LivePassJson(const LivePass& pass) {
  ordered_json rows = ordered_json::array();
  ordered_json buys = ordered_json::array();
  for (const LiveRow& row : pass.rows) {
    rows.push_back(LiveRowJson(row));
    if (row.action == LiveRow::Action::kBuy) buys.push_back(row.symbol);
  }
  return {{"date", IsoDate(pass.date)},
          {"list", pass.listName},
          {"stopLoss", pass.stopLossLimit},
          {"rsDays", pass.rsDays},
          {"rsCheck", pass.rsCheck},
          {"unusualVolumeCheck", pass.unusualVolume},
          {"buyMode", pass.buyMode == 1 ? "BoxTops" : "Bounce"},
          {"rows", std::move(rows)},
          {"buyList", std::move(buys)}};
}

}  // namespace

ordered_json LiveJsonValue(const LiveReport& report) {
  ordered_json passes = ordered_json::array();
  for (const LivePass& pass : report.passes()) passes.push_back(LivePassJson(pass));
  const SweepLevels& l = report.levels;
  return {{"list", report.listName()},
          {"date", IsoDate(report.today())},
          {"stopLoss", LiveRangeJson(l.stopLossStart, l.stopLossStop, l.stopLossStep)},
          {"rsDays", LiveRangeJson(l.rsStart, l.rsStop, l.rsStep)},
          {"passes", std::move(passes)}};
}

std::string LiveReportJson(const LiveReport& report) {
  return JsonText(LiveJsonValue(report));
}

}  // namespace halvard::runs
