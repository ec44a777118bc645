// halvard live and halvard batch: the live trading report and the batch test over a watch list,
// each swept over stop-loss and RS-days levels, printed as their windows show them.

#include <iostream>
#include <type_traits>

#include "commands.h"
#include "halvard/data/watch_list.h"
#include "halvard/error.h"
#include "halvard/runs/live_json.h"
#include "halvard/runs/live_report.h"
#include "halvard/runs/report_json.h"
#include "halvard/runs/report_text.h"
#include "halvard/runs/walk_forward.h"
#include "json_output.h"
#include "report_stream.h"
#include "sweep_options.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

struct SweepArgs {
  std::string list;
  SweepSwitches sweep;
  std::string saveResults;
  std::string saveInc;
  bool separate = false;  // batch only
  int walkForward = 0;    // batch only: the folds, 0 for the sweep
  bool json = false;
};

// The batch's document, or the walk-forward's when one ran.
runs::JsonDocument BatchDocument(const runs::WalkForwardReport& report) {
  if (report.walkForwardResult()) return runs::WalkForwardJson(*report.walkForwardResult());
  return runs::BatchJson(report.result());
}

void AddSweepOptions(Command& command, SweepArgs& args, std::string_view incHelp) {
  command.Add("--list", args.list, "The watch list to run (NAME or NAME.inc)").Required();
  AddSweepSwitches(command, args.sweep);
  command.Add("--save-results", args.saveResults, "Save the report as a text file");
  command.Add("--save-inc", args.saveInc, std::string(incHelp));
}

// Applies the levels options and the saves; what differs is the run itself and its JSON
// document. The text report is printed and saved as the run makes it. The live report, which
// says what to do tomorrow, warns when its prices are stale.
template <class Report, class RunIt, class JsonOf, class ListOf>
void RunSweep(const GlobalOptions& options, const SweepArgs& args, RunIt runIt, JsonOf jsonOf,
              ListOf listOf) {
  const auto session = OpenSession(options, StartMode::kFull);
  if (std::is_same_v<Report, runs::LiveReport>) {
    SelectListWarningIfStale(*session, args.list);
  } else {
    session->SelectList(args.list);
  }
  // Nothing here prints the engine's trade log: it is neither formatted nor kept.
  session->tester().KeepLog(false);
  TerminalProgress progress;
  Report report(*session, progress);
  report.levels = args.sweep.Levels(report.levels);
  ReportStream stream(!args.json, args.saveResults, progress);
  report.StreamReport(stream);
  RunThenPrint([&] { runIt(report); },
               [&] {
                 report.FlushReport();
                 if (args.json) std::cout << jsonOf(report) << "\n";
                 std::cout << std::flush;
               });
  if (progress.Cancelled()) throw Interrupted{};
  if (!args.saveResults.empty()) {
    stream.Save();
    std::cerr << "halvard: saved the report as " << args.saveResults << "\n";
  }
  if (!args.saveInc.empty()) {
    const auto path = data::WatchListPath(session->config.IncFilePath, args.saveInc);
    data::WriteWatchList(path, listOf(report));
    std::cerr << "halvard: saved the list as " << path.string() << "\n";
  }
}

}  // namespace

void AddLiveCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<SweepArgs>();
  auto command = program.Subcommand(
      "live", "What to do on the next trading day for every symbol of a watch list");
  AddSweepOptions(command, *args, "Save the symbols to buy as a watch list");
  command.Flag("--json", args->json, "Print the report as one JSON document");
  AddJobsOption(command, options);
  command.OnRun([&options, args] {
    RunSweep<runs::LiveReport>(
        options, *args, [&](runs::LiveReport& r) { r.Run(args->sweep.switches); },
        [](const runs::LiveReport& r) { return runs::LiveReportJson(r); },
        [](const runs::LiveReport& r) { return r.buyList(); });
  });
}

void AddBatchCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<SweepArgs>();
  auto command =
      program.Subcommand("batch", "Backtest every symbol of a watch list, swept over levels");
  AddSweepOptions(command, *args, "Save the symbols that traded as a watch list");
  AddJobsOption(command, options);
  command.Flag("--separate", args->separate,
               "Sweep the stop loss, then separately the RS days, instead of every "
               "combination");
  command
      .Add("--walk-forward", args->walkForward,
           "Instead of the sweep: cut each symbol's history into K+1 equal spans and trade "
           "each span from the 2nd on with the levels most profitable on the spans before it")
      .InRange(1, runs::kMaxFolds)
      .ValueName("K");
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args] {
    if (args->separate && args->walkForward > 0) {
      throw UsageError("--separate and --walk-forward are two different runs: choose one");
    }
    RunSweep<runs::WalkForwardReport>(
        options, *args,
        [&](runs::WalkForwardReport& r) {
          r.KeepRows(args->json);  // the rows as values are only for the JSON document
          if (args->walkForward > 0) {
            r.WalkForward(args->sweep.switches, args->walkForward);
          } else if (args->separate) {
            r.RunBatch(args->sweep.switches);
          } else {
            r.GoCommand(args->sweep.switches);
          }
        },
        [](const runs::WalkForwardReport& r) { return runs::JsonText(BatchDocument(r)); },
        [](const runs::WalkForwardReport& r) { return r.tradedList(); });
  });
}

}  // namespace halvard::cli
