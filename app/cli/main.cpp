// halvard: the command line of Halvard 600.

#include <iostream>

#include "commands.h"
#include "halvard/error.h"
#include "terminal_progress.h"

int main(int argc, char** argv) {
  using namespace halvard;
  CLI::App app{"Halvard 600: boxes, breakouts and buy signals from daily price files", "halvard"};
  cli::GlobalOptions options;
  app.add_option("--config", options.configFile, "The settings file to use");
  app.add_option("--stock-dir", options.stockDir, "The folder of the price files, for this run");
  app.add_option("--list-dir", options.listDir, "The folder of the watch lists, for this run");
  app.add_option("--set", options.sets, "\"Section/Value Name=text\": a setting for this run")
      ->allow_extra_args(false);
  app.require_subcommand(1);
  cli::AddConfigCommand(app, options);
  cli::AddBoxesCommand(app, options);
  cli::AddBacktestCommand(app, options);
  cli::AddChartCommand(app, options);
  cli::AddScanCommand(app, options);
  cli::AddLiveCommand(app, options);
  cli::AddBatchCommand(app, options);
  cli::AddDownloadCommand(app, options);
  cli::AddCheckCommand(app, options);
  cli::AddScheduleCommand(app, options);
  cli::AddSetOpsCommand(app, options);
  cli::AddFundamentalsCommands(app, options);
  cli::AddScreenCommand(app, options);

  try {
    app.parse(argc, argv);
  } catch (const cli::Interrupted& e) {
    std::cerr << "halvard: interrupted; " << e.outcome << "\n";
    return 130;
  } catch (const cli::Failed&) {
    return 1;
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
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
  return 0;
}
