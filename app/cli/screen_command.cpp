// halvard screen [--local] [criteria...] [--save NAME] [--json]: the stock screener. Prints the
// symbols found, one a line (or as one JSON document); --save writes them as a watch list. One
// option per criterion, made from the criteria table so the options and the query never drift
// apart.

#include <iostream>

#include "commands.h"
#include "halvard/platform/text.h"
#include "halvard/screener/criteria_table.h"
#include "halvard/screener/screen_json.h"
#include "halvard/screener/screener.h"
#include "json_output.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

struct ScreenArgs {
  screener::ScreenCriteria criteria;
  bool local = false;
  std::string saveAs;
  bool json = false;
};

std::string Joined(const std::vector<std::string>& labels) {
  std::string text;
  for (const std::string& label : labels) text += (text.empty() ? "" : ", ") + label;
  return text;
}

void Run(const GlobalOptions& options, const ScreenArgs& args, bool save) {
  const auto session = OpenSession(options, StartMode::kFull);
  const settings::ServiceSettings services = OpenServices(options, *session);
  if (!args.local && platform::TrimSpaces(services.screenerHost).empty()) {
    throw UsageError(
        "screen needs a screener service, and none is set ([Services] Screener Host; no public "
        "service answers its query): use --local to screen the price files and the stock "
        "database");
  }
  screener::ScreenResult result;
  {
    TerminalProgress progress;
    result = args.local ? screener::ScreenLocally(*session, args.criteria, progress)
                        : screener::ScreenWithService(services, args.criteria, progress);
    if (args.json) {
      PrintJson(screener::ScreenJson(result));
    } else {
      for (const std::string& symbol : result.symbols) std::cout << symbol << "\n";
      std::cout << std::flush;
    }
    for (const std::string& skipped : result.skipped) {
      std::cerr << "halvard: skipped " << skipped << "\n";
    }
    if (!result.notApplied.empty()) {
      std::cerr << "halvard: notice: not applied by the local screen: " << Joined(result.notApplied)
                << "\n";
    }
    if (result.pageCapReached) {
      std::cerr << "halvard: warning: the service still sent new symbols on page " << result.pages
                << "; no further page was asked for\n";
    }
    if (progress.Cancelled()) throw Interrupted{};
  }
  if (!save) return;
  const auto path = screener::SaveScreenList(*session, args.saveAs, result.symbols);
  std::cerr << "halvard: saved the list as " << path.string() << "\n";
}

}  // namespace

void AddScreenCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<ScreenArgs>();
  auto command = program.Subcommand(
      "screen",
      "Screen the stocks by the criteria given, with the screener service of [Services] "
      "Screener Host or, with --local, on the price files and the stock database; print the "
      "symbols found");
  command.Flag("--local", args->local,
               "Screen the local data: share price, average volume, one-year performance, "
               "EPS, EPS growth, P/E, industry and exchange; the other criteria are named "
               "on stderr as not applied");
  screener::ScreenCriteria& c = args->criteria;
  for (const auto& t : screener::TextCriteria()) {
    command.Add("--" + std::string(t.key), c.*t.field,
                "The " + std::string(t.label) + " (the whole text, any case)");
  }
  for (const auto& r : screener::RangeCriteria()) {
    screener::Bounds& bounds = c.*r.field;
    const std::string what = std::string(r.label) + " (" + std::string(r.unit) + ")";
    command.Add(
        "--" + std::string(r.key) + "-min", [&bounds](const double& v) { bounds.min = v; },
        "The least " + what);
    command.Add(
        "--" + std::string(r.key) + "-max", [&bounds](const double& v) { bounds.max = v; },
        "The most " + what);
  }
  auto save = command
                  .Add("--save", args->saveAs,
                       "Save the symbols found as the watch list NAME (NAME.inc in "
                       "the watch-list folder)")
                  .ValueName("NAME");
  AddJobsOption(command, options);
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args, save] { Run(options, *args, save.Given()); });
}

}  // namespace halvard::cli
