#pragma once
// The subcommands of halvard. Each Add* registers its subcommand on the app; the callback it
// installs runs the command with the global options.

#include "command_line.h"

#include "cli_context.h"
#include "halvard/error.h"

namespace halvard::cli {

void AddConfigCommand(Command& program, const GlobalOptions& options);
void AddBoxesCommand(Command& program, const GlobalOptions& options);
void AddBacktestCommand(Command& program, const GlobalOptions& options);
void AddChartCommand(Command& program, const GlobalOptions& options);
void AddScanCommand(Command& program, const GlobalOptions& options);
void AddLiveCommand(Command& program, const GlobalOptions& options);
void AddBatchCommand(Command& program, const GlobalOptions& options);
void AddSetOpsCommand(Command& program, const GlobalOptions& options);
void AddDownloadCommand(Command& program, const GlobalOptions& options);
void AddCheckCommand(Command& program, const GlobalOptions& options);
void AddScheduleCommand(Command& program, const GlobalOptions& options);
void AddDailyCommand(Command& program, const GlobalOptions& options);
void AddFundamentalsCommands(Command& program, const GlobalOptions& options);
void AddScreenCommand(Command& program, const GlobalOptions& options);

// Thrown by a command that has said what went wrong (a symbol that failed to download): the
// program ends with status 1 and prints nothing more.
struct Failed {};

// The SYMBOL argument and the --view option (1 to 5; 0 when not given) of the symbol commands.
void AddSymbolAndView(Command& command, std::string& symbol, int& view);

// The --jobs N option of a command that runs over a list.
void AddJobsOption(Command& command, const GlobalOptions& options);

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
// The same added to out, whose memory a caller printing piece after piece keeps.
void AppendWithLineFeeds(std::string_view text, std::string& out);

}  // namespace halvard::cli
