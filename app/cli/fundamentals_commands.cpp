// The fundamentals of the command line:
//   halvard info SYMBOL          the information page of a symbol
//   halvard company-data         "Download Company Data" over every price file
//   halvard eps-data             the EPS lines of every price file into eps.dat
//   halvard rank rs|eps          "Compute RS Rank" / "Compute EPS Rank"

#include <iostream>

#include "commands.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/runs/stock_info.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

void RunInfo(const GlobalOptions& options, const std::string& symbol) {
  const auto session = OpenSession(options, StartMode::kFull);
  const auto info = runs::ReadStockInfo(*session, symbol);
  if (!info) {
    throw Error("the stock database in " + session->config.IncFilePath + " could not be opened");
  }
  std::cout << WithLineFeeds(runs::StockInfoText(*info)) << std::flush;
}

// Runs one of the download commands with the [Services] hosts; Ctrl-C stops between two files.
template <class Download>
void RunDownload(const GlobalOptions& options, const char* kept, Download download) {
  const auto session = OpenSession(options, StartMode::kFull);
  const settings::ServiceSettings services = OpenServices(options, *session);
  const auto http = fundamentals::MakeCompanyDataClient(services);
  TerminalProgress progress;
  download(*session, services, *http, progress);
  if (progress.Cancelled()) throw Interrupted{kept};
}

void RunRank(const GlobalOptions& options, const std::string& which) {
  const auto session = OpenSession(options, StartMode::kFull);
  TerminalProgress progress;
  if (which == "eps") {
    runs::ComputeEPSRankCommand(*session, progress);
  } else {
    for (const std::string& skipped : runs::ComputeRSRankCommand(*session, progress)) {
      std::cerr << "halvard: skipped " << skipped << "\n";
    }
  }
  if (progress.Cancelled()) throw Interrupted{"the figures computed so far are stored"};
}

}  // namespace

void AddFundamentalsCommands(Command& program, const GlobalOptions& options) {
  auto symbol = std::make_shared<std::string>();
  auto info = program.Subcommand(
      "info", "Print the company data and ranks of a symbol from the stock database");
  info.Add("SYMBOL", *symbol, "The symbol").Required();
  info.OnRun([&options, symbol] { RunInfo(options, *symbol); });

  program
      .Subcommand("company-data",
                  "Download the company data of every price file's stock that has none yet")
      .OnRun([&options] {
        RunDownload(options, "the company data downloaded so far is stored",
                    [](runs::Session& s, const settings::ServiceSettings& services,
                       platform::HttpClient& http, platform::Progress& progress) {
                      runs::DownloadCompanyData(
                          s, {&http, services.quotesHost, services.profileHost}, progress);
                    });
      });

  program.Subcommand("eps-data", "Download the EPS line of every price file's stock into eps.dat")
      .OnRun([&options] {
        RunDownload(options, "eps.dat holds the EPS lines downloaded so far",
                    [](runs::Session& s, const settings::ServiceSettings& services,
                       platform::HttpClient& http, platform::Progress& progress) {
                      runs::DownloadEPSData(s, http, services.quotesHost, progress);
                    });
      });

  auto which = std::make_shared<std::string>();
  auto rank = program.Subcommand(
      "rank", "Compute the RS averages and RS ranks (rs) or the EPS ranks (eps) of the stocks");
  rank.Add("WHICH", *which, "rs or eps").Required().OneOf({"rs", "eps"});
  rank.OnRun([&options, which] { RunRank(options, *which); });
}

}  // namespace halvard::cli
