#pragma once
// The live trading report as one JSON document (live --json, and beside each daily report):
// the values of the text report, numbers as numbers and dates as yyyy-mm-dd.
//
// {"list":"sample","date":"2026-11-24",
//  "stopLoss":{"start":0.125,"stop":0.125,"step":1},"rsDays":{"start":10,"stop":10,"step":1},
//  "passes":[{"date":"2026-11-24","list":"sample","stopLoss":0.125,"rsDays":10,
//             "rsCheck":true,"unusualVolumeCheck":true,"buyMode":"BoxTops",
//             "rows":[{"symbol":"AAPL","action":"Buy","newestDate":"2017-12-29",
//                      "signalDate":"2017-12-28","stopBuy":172.625,"stopLoss":168.875},
//                     {"symbol":"CSCO","action":"Skip","newestDate":"2017-12-29"},
//                     {"symbol":"GONE","action":"Error"}],
//             "buyList":["AAPL"]}]}

#include <string>

#include "halvard/runs/live_report.h"

namespace halvard::runs {

// One line, ended by no line end. A symbol that is not UTF-8 text is a halvard::Error.
std::string LiveReportJson(const LiveReport& report);

}  // namespace halvard::runs
