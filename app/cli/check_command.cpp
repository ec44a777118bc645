// halvard check [--list NAME...] [--fix] [--json]: reads every price file of the stock files folder
// (or of the lists' symbols) and the index file as the loader does, prints one line a problem and a
// summary, and exits 1 when a file does not load. --fix rewrites what it can make load.

#include <iostream>

#include "commands.h"
#include "halvard/data/price_check.h"
#include "halvard/runs/report_json.h"
#include "halvard/runs/stock_walk.h"
#include "json_output.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

struct CheckArgs {
  std::vector<std::string> lists;
  bool fix = false;
  bool json = false;
};

void Run(const GlobalOptions& options, const CheckArgs& args) {
  const auto session = OpenSession(options, StartMode::kFoldersOnly);
  const settings::Config& config = session->config;
  const std::vector<std::string> names =
      args.lists.empty() ? data::FolderFilesToCheck(config.StockFilePath)
                         : data::ListFilesToCheck(config.IncFilePath, args.lists);
  TerminalProgress progress;
  const auto checked = data::CheckPriceFiles(config.StockFilePath, names, args.fix, progress,
                                             runs::ListJobs(config));
  if (args.json) {
    PrintJson(runs::CheckJson(checked));
  } else {
    std::cout << WithLineFeeds(data::CheckReportText(checked)) << std::flush;
  }
  if (progress.Cancelled())
    throw Interrupted{args.fix ? "the files fixed so far are kept" : "nothing was changed"};
  if (!data::AllLoad(checked)) throw Failed{};
}

}  // namespace

void AddCheckCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<CheckArgs>();
  auto command = program.Subcommand(
      "check", "Check that every price file and the index file load; exit 1 when one does not");
  command.Add("--list", args->lists, "Check only the price files of these watch lists");
  command.Flag("--fix", args->fix,
               "Trim over-long files to their newest 1001 days and rewrite their line ends, "
               "where that makes them load");
  AddJobsOption(command, options);
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
