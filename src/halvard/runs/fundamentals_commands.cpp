#include "halvard/runs/fundamentals_commands.h"

#include "halvard/data/file_parser.h"
#include "halvard/data/price_folder.h"
#include "halvard/error.h"

namespace halvard::runs {
namespace {

// Calls visit(symbol) for every price file, one progress step each with the status text; stops
// between two files on a cancel. Returns false when cancelled.
template <class Visit>
bool ForEachPriceFile(const Session& s, platform::Progress& progress, const std::string& status,
                      Visit visit) {
  const auto files = data::ListPriceFiles(s.config.StockFilePath);
  const int n = static_cast<int>(files.size());
  for (int i = 0; i < n; ++i) {
    const std::string symbol = data::SymbolOfFileName(files[i]);
    progress.Step(i, n, status + symbol);
    if (progress.Cancelled()) return false;
    visit(files[i], symbol);
  }
  return true;
}

}  // namespace

std::vector<std::string> DownloadCompanyData(Session& s, fundamentals::FundamentalsSource& source,
                                             platform::Progress& progress) {
  fundamentals::StockDataStore& db = s.stockDb();
  std::vector<std::string> missed;
  ForEachPriceFile(s, progress, "Downloading Company Data for ",
                   [&](const std::string&, const std::string& symbol) {
                     std::string description, industry, exchange, name;
                     double epsRank = 0, rsRank = 0;
                     db.GetStockData(symbol, description, epsRank, rsRank, industry, exchange,
                                     name);
                     // A stock with a name was fetched before; a second run only adds new ones.
                     if (!name.empty()) return;
                     const std::string why = source.StoreCompanyData(db, symbol);
                     if (!why.empty()) missed.push_back(symbol + ": " + why);
                   });
  return missed;
}

void DownloadCompanyData(Session& s, const fundamentals::CompanyServices& services,
                         platform::Progress& progress) {
  DownloadCompanyData(s, *fundamentals::MakeQuotesSource(services), progress);
}

std::vector<std::string> DownloadEPSData(Session& s, fundamentals::FundamentalsSource& source,
                                         platform::Progress& progress) {
  fundamentals::EPSStore& store = s.epsStore();
  int successes = 0;
  std::vector<std::string> missed;
  ForEachPriceFile(s, progress, "Downloading EPS Data for ",
                   [&](const std::string&, const std::string& symbol) {
                     std::string why;
                     if (auto line = source.EPSLine(symbol, why)) {
                       store.SetLine(symbol, std::move(*line));
                       ++successes;
                     } else {
                       missed.push_back(symbol + ": " + why);
                     }
                     if (successes % 10 == 0) store.WriteEPSData();
                   });
  store.WriteEPSData();
  return missed;
}

void DownloadEPSData(Session& s, platform::HttpClient& http, const std::string& quotesHost,
                     platform::Progress& progress) {
  DownloadEPSData(s, *fundamentals::MakeQuotesSource({&http, quotesHost, ""}), progress);
}

std::vector<std::string> ComputeRSRankCommand(Session& s, platform::Progress& progress) {
  fundamentals::StockDataStore& db = s.stockDb();
  engine::StockView& v = s.view();
  std::vector<std::string> skipped;
  const auto averageOne = [&](const std::string& file, const std::string& symbol) {
    const std::string path = s.config.StockFilePath + "/" + file;
    try {
      if (!data::LoadStockFile(v, path)) return;
    } catch (const Error& e) {
      skipped.push_back(e.what());
      return;
    }
    // The averages come from the same pass as the chart's RS line, which is left drawn for
    // this stock.
    engine::ComputeRSLine(v);
    double avg = 0;
    double prevAvg = 0;
    engine::ComputeRSAverages(v, avg, prevAvg);
    db.SetRSAvg(symbol, avg, prevAvg);
  };
  const bool finished = ForEachPriceFile(s, progress, "Computing RS Average for ", averageOne);
  if (finished) db.ComputeRSRank(progress);
  return skipped;
}

void ComputeEPSRankCommand(Session& s, platform::Progress& progress) {
  progress.Step(0, 1, "Computing EPS Rank");
  s.stockDb().ComputeEPSRank(progress);
}

}  // namespace halvard::runs
