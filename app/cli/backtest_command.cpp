// halvard backtest SYMBOL [--signal]: the backtest of the shown symbol, as the "m" key runs it
// ("g" with --signal), printed as the log pane shows it.

#include <iostream>

#include "commands.h"
#include "halvard/error.h"

namespace halvard::cli {
namespace {

struct BacktestArgs {
  std::string symbol;
  bool signal = false;
};

void Run(const GlobalOptions& options, const BacktestArgs& args) {
  const auto session = OpenSession(options, StartMode::kFull);
  ShowSymbolOrFail(*session, args.symbol);
  session->ShowView();
  session->BacktestShown(args.signal);
  std::cout << WithLineFeeds(session->log().text());
}

}  // namespace

void AddBacktestCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<BacktestArgs>();
  auto command = program.Subcommand("backtest", "Backtest the box strategy on a symbol");
  command.Add("SYMBOL", args->symbol, "The symbol (its price file is SYMBOL.txt)").Required();
  command.Flag("--signal", args->signal,
               "Signal mode: stop at the first buy or stop-loss signal instead of trading");
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
