// halvard daily --list NAME... [--corvane] [--pyramiding] [--rs] [--stoploss S,E,STEP]
// [--rs-days S,E,STEP] [--reports DIR] [--skip-existing]: the evening in one command. The
// download when it is due, the live report of every list written into the reports folder, and
// on stdout only what to act on: the "Buy" rows, newest signal first, and a line per list.

#include <iostream>

#include "commands.h"
#include "download_context.h"
#include "halvard/platform/clock.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/number_text.h"
#include "halvard/runs/daily_report.h"
#include "sweep_options.h"

namespace halvard::cli {
namespace {

struct DailyArgs {
  std::vector<std::string> lists;
  SweepSwitches sweep;
  std::string reports;
  bool skipExisting = false;
};

void PrintBuys(const runs::DailyResult& result) {
  using platform::FormatGeneral;
  for (const runs::DailyBuy& buy : runs::BuysNewestFirst(result)) {
    const runs::LiveRow& r = buy.row;
    std::cout << r.symbol << "\tBuy\t" << platform::FormatShortDate(r.signalDate) << "\t"
              << FormatGeneral(r.stopBuy) << "\t" << FormatGeneral(r.stopLoss) << "\t" << buy.list
              << "\n";
  }
}

void Run(const GlobalOptions& options, const DailyArgs& args) {
  DownloadContext c(options);
  const settings::Config& config = c.session->config;
  runs::DailyOptions daily{
      .lists = args.lists,
      .switches = args.sweep.switches,
      .levels = args.sweep.Levels(runs::DefaultLevels(config)),
      .reportsFolder = args.reports.empty() ? config.ReportFilePath : args.reports,
      .skipExisting = args.skipExisting};
  const runs::DailyResult result =
      runs::RunDaily(*c.session, c.downloads, daily, platform::Now(), c.progress);
  if (result.notDownloaded.empty()) {
    c.ReportServed();
  } else {
    std::cerr << "halvard: prices not downloaded: " << result.notDownloaded << "\n";
  }
  PrintBuys(result);
  for (const runs::DailyList& list : result.lists) {
    std::cout << runs::DailySummaryLine(list) << "\n";
    for (const std::string& failure : list.failures) {
      std::cerr << "halvard: " << list.name << ": " << failure << "\n";
    }
    if (!list.textFile.empty()) std::cerr << "halvard: wrote " << list.textFile.string() << "\n";
  }
  std::cout << std::flush;
  // What was done is printed first, as after any stopped run.
  if (result.cancelled) {
    const bool inDownload = result.lists.empty() && result.download == data::ScheduleVerdict::kDue;
    throw Interrupted{inDownload ? kDownloadsKept : "the list it stopped in got no report"};
  }
  if (result.failed()) throw Failed{};
}

}  // namespace

void AddDailyCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<DailyArgs>();
  auto command = program.Subcommand(
      "daily",
      "The evening routine: download the lists when the once-a-day download is due, write each "
      "list's live report into the reports folder, print the Buy rows");
  command.Add("--list", args->lists, "The watch lists to report on (NAME or NAME.inc)").Required();
  AddSweepSwitches(command, args->sweep);
  command.Add("--reports", args->reports,
              "The folder the reports are written to (default: Paths/Report File Path)");
  AddSkipExisting(command, args->skipExisting);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
