// halvard backtest SYMBOL [--signal] [--json]: the backtest of the shown symbol, as the "m" key
// runs it ("g" with --signal), printed as the log pane shows it (or as one JSON document).

#include <iostream>

#include "commands.h"
#include "halvard/error.h"
#include "halvard/runs/report_json.h"
#include "json_output.h"

namespace halvard::cli {
namespace {

struct BacktestArgs {
  std::string symbol;
  bool signal = false;
  bool json = false;
};

void Run(const GlobalOptions& options, const BacktestArgs& args) {
  const auto session = OpenSession(options, StartMode::kFull);
  ShowSymbolOrFail(*session, args.symbol);
  session->ShowView();
  const int code = session->BacktestShown(args.signal);
  if (args.json) {
    PrintJson(runs::BacktestJson(*session, args.signal, code));
  } else {
    std::cout << WithLineFeeds(session->log().text());
  }
}

}  // namespace

void AddBacktestCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<BacktestArgs>();
  auto command = program.Subcommand("backtest", "Backtest the box strategy on a symbol");
  command.Add("SYMBOL", args->symbol, "The symbol (its price file is SYMBOL.txt)").Required();
  command.Flag("--signal", args->signal,
               "Signal mode: stop at the first buy or stop-loss signal instead of trading");
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
