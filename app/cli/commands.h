#pragma once
// The subcommands of halvard. Each Add* registers its subcommand on the app; the callback it
// installs runs the command with the global options.

#include <CLI/CLI.hpp>

#include "cli_context.h"
#include "halvard/error.h"

namespace halvard::cli {

void AddConfigCommand(CLI::App& app, const GlobalOptions& options);
void AddBoxesCommand(CLI::App& app, const GlobalOptions& options);
void AddBacktestCommand(CLI::App& app, const GlobalOptions& options);
void AddChartCommand(CLI::App& app, const GlobalOptions& options);
void AddScanCommand(CLI::App& app, const GlobalOptions& options);
void AddLiveCommand(CLI::App& app, const GlobalOptions& options);
void AddBatchCommand(CLI::App& app, const GlobalOptions& options);
void AddSetOpsCommand(CLI::App& app, const GlobalOptions& options);
void AddDownloadCommand(CLI::App& app, const GlobalOptions& options);
void AddCheckCommand(CLI::App& app, const GlobalOptions& options);
void AddScheduleCommand(CLI::App& app, const GlobalOptions& options);
void AddFundamentalsCommands(CLI::App& app, const GlobalOptions& options);
void AddScreenCommand(CLI::App& app, const GlobalOptions& options);

// Thrown by a command that has said what went wrong (a symbol that failed to download): the
// program ends with status 1 and prints nothing more.
struct Failed {};

// The SYMBOL argument and the --view option (1 to 5; 0 when not given) of the symbol commands.
void AddSymbolAndView(CLI::App& command, std::string& symbol, int& view);

// Runs a run over a list, then prints what it found. A price file the run cannot load ends it
// with a halvard::Error naming the file, the line and the problem; what was found before is
// printed first, as after a Ctrl-C, and the error goes on to end the program.
template <class Run, class Print>
void RunThenPrint(Run&& run, Print&& print) {
  try {
    run();
  } catch (const Error&) {
    print();
    throw;
  }
  print();
}

// A report of the program (CR LF line ends) as the command line prints it: LF only.
std::string WithLineFeeds(std::string_view text);

}  // namespace halvard::cli
