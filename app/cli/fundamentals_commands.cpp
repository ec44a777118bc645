// The fundamentals of the command line:
//   halvard info SYMBOL [--json] the information page of a symbol
//   halvard company-data         "Download Company Data" over every price file
//   halvard eps-data             the EPS lines of every price file into eps.dat
//   halvard rank rs|eps [--json] "Compute RS Rank" / "Compute EPS Rank"

#include <unistd.h>

#include <iostream>

#include "commands.h"
#include "halvard/fundamentals/fundamentals_source.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/runs/report_json.h"
#include "halvard/runs/stock_info.h"
#include "json_output.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

void RunInfo(const GlobalOptions& options, const std::string& symbol, bool json) {
  const auto session = OpenSession(options, StartMode::kFull);
  const auto info = runs::ReadStockInfo(*session, symbol);
  if (!info) {
    throw Error("the stock database in " + session->config.IncFilePath + " could not be opened");
  }
  if (json) {
    PrintJson(runs::StockInfoJson(symbol, *info));
  } else {
    std::cout << WithLineFeeds(runs::StockInfoText(*info)) << std::flush;
  }
}

// The SEC asks every client for a contact. A user at a terminal is asked for it once, and it is
// kept in the settings file; anywhere else the run stops and says how to set it.
void AskForContactIfNeeded(runs::Session& session, settings::ServiceSettings& services) {
  if (!fundamentals::NeedsContact(services)) return;
  if (!::isatty(STDIN_FILENO) || !::isatty(STDERR_FILENO))
    throw Error(fundamentals::kContactNeeded);
  std::cerr << "The SEC asks every client for a contact with each request. Your name and e-mail "
               "(kept as [Services] Contact): "
            << std::flush;
  std::string typed;
  if (!std::getline(std::cin, typed)) throw Error(fundamentals::kContactNeeded);
  const auto stored = settings::SetServiceSettingFromText(services, "Contact", typed);
  session.store().SaveString(settings::kAppName, settings::kServicesSection, stored.name,
                             stored.text);
}

// The two downloads of the fundamentals: the command, its help, what a Ctrl-C keeps, and the run.
struct FundamentalsDownload {
  const char* name;
  const char* help;
  const char* kept;
  std::vector<std::string> (*download)(runs::Session&, fundamentals::FundamentalsSource&,
                                       platform::Progress&);
};

constexpr FundamentalsDownload kDownloads[] = {
    {"company-data",
     "Download the company data of every price file's stock that has none yet ([Services] "
     "Fundamentals chooses the service)",
     "the company data downloaded so far is stored", runs::DownloadCompanyData},
    {"eps-data",
     "Download the EPS line of every price file's stock into eps.dat ([Services] Fundamentals "
     "chooses the service)",
     "eps.dat holds the EPS lines downloaded so far", runs::DownloadEPSData},
};

// Runs one of the downloads with the source [Services] Fundamentals chooses; Ctrl-C stops
// between two files. What the source had nothing for is named on stderr.
void RunDownload(const GlobalOptions& options, const FundamentalsDownload& run) {
  const auto session = OpenSession(options, StartMode::kFull);
  settings::ServiceSettings services = OpenServices(options, *session);
  AskForContactIfNeeded(*session, services);
  const auto source = fundamentals::MakeFundamentalsSource(
      services, {[] { return TerminalProgress::InterruptRequested(); }, {}});
  TerminalProgress progress;
  for (const std::string& missed : run.download(*session, *source, progress)) {
    std::cerr << "halvard: nothing for " << missed << "\n";
  }
  if (progress.Cancelled()) throw Interrupted{run.kept};
}

void RunRank(const GlobalOptions& options, const std::string& which, bool json) {
  const auto session = OpenSession(options, StartMode::kFull);
  TerminalProgress progress;
  std::vector<std::string> skipped;
  if (which == "eps") {
    runs::ComputeEPSRankCommand(*session, progress);
  } else {
    skipped = runs::ComputeRSRankCommand(*session, progress);
    for (const std::string& file : skipped) std::cerr << "halvard: skipped " << file << "\n";
  }
  if (progress.Cancelled()) throw Interrupted{"the figures computed so far are stored"};
  if (json) PrintJson(runs::RankJson(which, skipped));
}

}  // namespace

void AddFundamentalsCommands(Command& program, const GlobalOptions& options) {
  auto symbol = std::make_shared<std::string>();
  auto infoJson = std::make_shared<bool>(false);
  auto info = program.Subcommand(
      "info", "Print the company data and ranks of a symbol from the stock database");
  info.Add("SYMBOL", *symbol, "The symbol").Required();
  AddJsonFlag(info, *infoJson);
  info.OnRun([&options, symbol, infoJson] { RunInfo(options, *symbol, *infoJson); });

  for (const FundamentalsDownload& download : kDownloads) {
    program.Subcommand(download.name, download.help).OnRun([&options, &download] {
      RunDownload(options, download);
    });
  }

  auto which = std::make_shared<std::string>();
  auto rankJson = std::make_shared<bool>(false);
  auto rank = program.Subcommand(
      "rank", "Compute the RS averages and RS ranks (rs) or the EPS ranks (eps) of the stocks");
  rank.Add("WHICH", *which, "rs or eps").Required().OneOf({"rs", "eps"});
  AddJsonFlag(rank, *rankJson);
  rank.OnRun([&options, which, rankJson] { RunRank(options, *which, *rankJson); });
}

}  // namespace halvard::cli
