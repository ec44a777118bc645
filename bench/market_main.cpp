// halvard-market DIR [--symbols N] [--bars B] [--seed S]: writes a synthetic market, so that the
// command line and the benchmarks can be tried on an exchange of any size.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

#include "market_generator.h"

int main(int argc, char** argv) {
  using namespace halvard::bench;
  CLI::App app{"Writes random-walk price files <SYMBOL>.txt, ^IXIC.txt and the watch list " +
                   std::string(kMarketListName) + " into DIR",
               "halvard-market"};
  std::string folder;
  int symbols = kDefaultSymbols;
  int bars = kDefaultBars;
  uint64_t seed = kDefaultSeed;
  app.add_option("DIR", folder, "The folder to write (created when missing)")->required();
  app.add_option("--symbols", symbols, "How many symbols")
      ->check(CLI::Range(1, 1'000'000))
      ->capture_default_str();
  app.add_option("--bars", bars, "Days per file, newest 2017-12-29")
      ->check(CLI::Range(1, 1001))
      ->capture_default_str();
  app.add_option("--seed", seed, "The same seed writes the same files")->capture_default_str();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
  }
  try {
    GenerateMarket(folder, symbols, bars, seed);
  } catch (const std::exception& e) {
    std::cerr << "halvard-market: error: " << e.what() << "\n";
    return 1;
  }
  std::cout << "Wrote " << symbols << " price files of " << bars << " days, ^IXIC.txt and "
            << kMarketListName << " in " << folder << "\n";
  return 0;
}
