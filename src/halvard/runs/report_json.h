#pragma once
// The JSON documents of the reports: each made from the values its text report is made from,
// with the fields the README's "JSON output" lists, dates and amounts as json_fields makes them.

#include <string>
#include <vector>

#include "halvard/data/downloader.h"
#include "halvard/data/price_check.h"
#include "halvard/runs/batch_report.h"
#include "halvard/runs/json_fields.h"
#include "halvard/runs/price_downloads.h"
#include "halvard/runs/scan_commands.h"
#include "halvard/runs/session.h"
#include "halvard/runs/stock_info.h"
#include "halvard/runs/walk_forward.h"
#include "halvard/settings/config.h"
#include "halvard/settings/services.h"
#include "halvard/tools/boolean_db.h"

namespace halvard::runs {

// A scan's result: the list scanned (none for the rank scans) and the symbols that passed.
JsonDocument ScanJson(const ScanCommand& scan, const Session& session, const ScanSymbols& passed);

// Every sweep of a batch report, its steps with their tables and summaries.
JsonDocument BatchJson(const BatchResult& result);

// A walk-forward run: the symbols left out, the fold table and the two totals.
JsonDocument WalkForwardJson(const WalkForwardResult& result);

// The last backtest of the session's shown symbol (result code as Backtest returned it): its
// outcome, its buys and sales, and the trade log's lines.
JsonDocument BacktestJson(Session& session, bool signalMode, int code);

// Every file checked, with what the loader says of it, and the counts of the summary.
JsonDocument CheckJson(const std::vector<data::CheckedFile>& files);

// The days asked for, how each symbol ended (in the order asked), and for a run over lists,
// how each list ended with the symbols that failed.
struct ListDownload {
  std::string list;
  ListDownloadAnswer answer;
};
JsonDocument DownloadJson(const DownloadRequest& request,
                          const std::vector<data::Downloader::Outcome>& outcomes,
                          const std::vector<ListDownload>& lists);

JsonDocument StockInfoJson(const std::string& symbol, const StockInfo& info);

// Every setting, as config show prints it, then the [Services] section.
JsonDocument SettingsJson(const std::vector<settings::SettingText>& settings,
                          const std::vector<settings::ServiceText>& services);

// The saved combinations, numbered from 1.
JsonDocument SetOpsJson(const std::vector<tools::SetOpRecord>& records);

// A rank run: which rank, and the files the RS rank skipped.
JsonDocument RankJson(const std::string& which, const std::vector<std::string>& skipped);

}  // namespace halvard::runs
