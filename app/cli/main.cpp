// halvard: the command line of Halvard 600.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "commands.h"
#include "halvard/error.h"
#include "halvard/platform/version.h"
#include "terminal_progress.h"

namespace {

using namespace halvard;

int ParseAndRun(int argc, char** argv) {
  cli::CommandLine line("Halvard 600: boxes, breakouts and buy signals from daily price files",
                        "halvard", platform::VersionText("halvard"));
  cli::Command program = line.Program();
  cli::GlobalOptions options;
  program.Add("--config", options.configFile, "The settings file to use");
  program.Add("--stock-dir", options.stockDir, "The folder of the price files, for this run");
  program.Add("--list-dir", options.listDir, "The folder of the watch lists, for this run");
  program.Add("--set", options.sets, "\"Section/Value Name=text\": a setting for this run")
      .OneValueEach();
  program.NeedsSubcommand();
  cli::AddConfigCommand(program, options);
  cli::AddBoxesCommand(program, options);
  cli::AddBacktestCommand(program, options);
  cli::AddChartCommand(program, options);
  cli::AddScanCommand(program, options);
  cli::AddLiveCommand(program, options);
  cli::AddBatchCommand(program, options);
  cli::AddDownloadCommand(program, options);
  cli::AddCheckCommand(program, options);
  cli::AddScheduleCommand(program, options);
  cli::AddDailyCommand(program, options);
  cli::AddSetOpsCommand(program, options);
  cli::AddFundamentalsCommands(program, options);
  cli::AddScreenCommand(program, options);

  try {
    return line.Run(argc, argv);
  } catch (const cli::Interrupted& e) {
    std::cerr << "halvard: interrupted; " << e.outcome << "\n";
    return 130;
  } catch (const cli::Failed&) {
    return 1;
  } catch (const UsageError& e) {
    std::cerr << "halvard: usage error: " << e.what() << "\n";
    return 2;
  } catch (const Error& e) {
    std::cerr << "halvard: error: " << e.what() << "\n";
    return 1;
  } catch (const std::exception& e) {
    std::cerr << "halvard: error: " << e.what() << "\n";
    return 1;
  }
}

// Output that never reached its file (a full disk, > /dev/full) is an error, never a quiet
// success: a script must not take a truncated report for a whole one.
bool StdoutWritten() {
  errno = 0;
  std::cout.flush();
  const bool flushed = std::fflush(stdout) == 0;
  const int error = errno;
  if (flushed && !std::cout.fail() && !std::ferror(stdout)) return true;
  std::cerr << "halvard: error: cannot write to standard output"
            << (error != 0 ? std::string(": ") + std::strerror(error) : std::string()) << "\n";
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const int status = ParseAndRun(argc, argv);
  if (!StdoutWritten() && status == 0) return 1;
  return status;
}
