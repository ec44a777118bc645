// halvard scan KIND [--list NAME] [--save [LIST]] [--json]: one of the scans over a watch list, or
// one of the rank scans over the stock database; prints the symbols that passed, one a line (or
// as one JSON document), and with --save writes them as a watch list.

#include <iostream>

#include "commands.h"
#include "halvard/data/watch_list.h"
#include "halvard/runs/report_json.h"
#include "halvard/runs/scan_commands.h"
#include "halvard/runs/scans.h"
#include "json_output.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

struct ScanArgs {
  std::string kind;
  std::string list;
  std::string saveAs;
  bool json = false;
};

void Run(const GlobalOptions& options, const ScanArgs& args, bool save) {
  const runs::ScanCommand& scan = *runs::FindScanCommand(args.kind);
  if (scan.overList && args.list.empty()) {
    throw UsageError("scan " + args.kind + " needs --list NAME");
  }
  if (!scan.overList && !args.list.empty()) {
    throw UsageError("scan " + args.kind + " ranks the stock database; it takes no --list");
  }
  const auto session = OpenSession(options, StartMode::kFull);
  if (scan.overList) SelectListWarningIfStale(*session, args.list);
  const auto print = [&](const runs::ScanSymbols& passed) {
    if (args.json) {
      PrintJson(runs::ScanJson(scan, *session, passed));
    } else {
      for (const std::string& symbol : passed) std::cout << symbol << "\n";
      std::cout << std::flush;
    }
  };
  runs::ScanSymbols passed;
  {
    TerminalProgress progress;
    // What passed before a price file that does not load is printed ahead of its error.
    try {
      passed = scan.run(*session, progress);
    } catch (const Error& e) {
      print(runs::PassedBefore(e));
      throw;
    }
    print(passed);
    if (progress.Cancelled()) throw Interrupted{};
  }
  if (!save) return;
  const std::string name = args.saveAs.empty() ? scan.listName(session->config) : args.saveAs;
  const auto path = data::WatchListPath(session->config.IncFilePath, name);
  runs::SaveResultList(passed, path);
  std::cerr << "halvard: saved the list as " << path.string() << "\n";
}

}  // namespace

void AddScanCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<ScanArgs>();
  auto command = program.Subcommand("scan", "Scan a watch list and print the symbols that pass");
  std::vector<std::string> kinds;
  std::string names;
  for (const auto& scan : runs::ScanCommands()) {
    kinds.emplace_back(scan.key);
    names += (names.empty() ? "" : ", ") + scan.listName(settings::Config{});
  }
  command.Add("KIND", args->kind, "The scan").Required().OneOf(kinds);
  command.Add("--list", args->list,
              "The watch list to scan (NAME or NAME.inc); not for the rank scans");
  auto save = command
                  .Add("--save", args->saveAs,
                       "Save the result as a watch list; LIST defaults to the scan's "
                       "own name (" +
                           names + ")")
                  .ValueOptional();
  AddJobsOption(command, options);
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args, save] { Run(options, *args, save.Given()); });
}

}  // namespace halvard::cli
