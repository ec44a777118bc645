// halvard-market DIR [--symbols N] [--bars B] [--seed S]: writes a synthetic market, so that the
// command line and the benchmarks can be tried on an exchange of any size.

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

#include "command_line.h"
#include "halvard/platform/version.h"
#include "market_generator.h"

int main(int argc, char** argv) {
  using namespace halvard::bench;
  const std::string about =
      "Writes random-walk price files <SYMBOL>.txt, ^IXIC.txt and the watch list " +
      std::string(kMarketListName) + " into DIR";
  halvard::cli::CommandLine line(about, "halvard-market",
                                 halvard::platform::VersionText("halvard-market"));
  halvard::cli::Command app = line.Program();
  std::string folder;
  int symbols = kDefaultSymbols;
  int bars = kDefaultBars;
  uint64_t seed = kDefaultSeed;
  app.Add("DIR", folder, "The folder to write (created when missing)").Required();
  app.Add("--symbols", symbols, "How many symbols").InRange(1, 1'000'000).ShowDefault();
  app.Add("--bars", bars, "Days per file, newest 2017-12-29").InRange(1, 1001).ShowDefault();
  app.Add("--seed", seed, "The same seed writes the same files").ShowDefault();
  app.OnRun([&] {
    GenerateMarket(folder, symbols, bars, seed);
    std::cout << "Wrote " << symbols << " price files of " << bars << " days, ^IXIC.txt and "
              << kMarketListName << " in " << folder << "\n";
  });
  try {
    return line.Run(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "halvard-market: error: " << e.what() << "\n";
    return 1;
  }
}
