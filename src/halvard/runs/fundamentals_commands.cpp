#include "halvard/runs/fundamentals_commands.h"

#include "halvard/data/file_parser.h"
#include "halvard/data/price_folder.h"
#include "halvard/data/series_copy.h"
#include "halvard/error.h"
#include "halvard/platform/ordered_work.h"
#include "halvard/runs/stock_walk.h"

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
  // The averages come from the same pass as the chart's RS line, which is left drawn for the
  // last stock.
  const auto average = [&](const std::string& symbol) {
    engine::ComputeRSLine(v);
    double avg = 0;
    double prevAvg = 0;
    engine::ComputeRSAverages(v, avg, prevAvg);
    db.SetRSAvg(symbol, avg, prevAvg);
  };
  const auto averageOne = [&](const std::string& file, const std::string& symbol) {
    const std::string path = s.config.StockFilePath + "/" + file;
    try {
      if (!data::LoadStockFile(v, path)) return;
    } catch (const Error& e) {
      skipped.push_back(e.what());
      return;
    }
    average(symbol);
  };
  const auto files = data::ListPriceFiles(s.config.StockFilePath);
  const int n = static_cast<int>(files.size());
  const int jobs = std::min(ListJobs(s.config), n);
  bool finished = true;
  if (jobs <= 1) {
    finished = ForEachPriceFile(s, progress, "Computing RS Average for ", averageOne);
  } else {
    // The files are read and parsed on the threads; each is then taken up here in the folder's
    // order, as one thread does it (a file that does not load is read again here, so that its
    // message and what it left in the view are those of one thread).
    struct Loaded {
      std::string path;
      bool found = false;
      data::SeriesCopy series;
    };
    finished = platform::TakeInOrder<Loaded>(
        n, jobs, [] { return std::make_unique<data::PriceSeries>(); },
        [&](data::PriceSeries& series, int i, Loaded& loaded) {
          loaded.path = s.config.StockFilePath + "/" + files[static_cast<size_t>(i)];
          loaded.found = data::LoadStockFile(series, loaded.path);
          if (loaded.found) loaded.series.Keep(series, series.barCount);
        },
        [&](int i, Loaded* loaded) {
          const std::string& file = files[static_cast<size_t>(i)];
          const std::string symbol = data::SymbolOfFileName(file);
          progress.Step(i, n, "Computing RS Average for " + symbol);
          if (progress.Cancelled()) return false;
          if (loaded == nullptr) {
            averageOne(file, symbol);
          } else if (!loaded->found) {
            v.stockFilePath = loaded->path;
            v.stockSymbol = data::SymbolOfPath(loaded->path);
            v.barCount = 0;
          } else {
            loaded->series.Restore(loaded->path, v);
            average(symbol);
          }
          return true;
        });
  }
  if (finished) db.ComputeRSRank(progress);
  return skipped;
}

void ComputeEPSRankCommand(Session& s, platform::Progress& progress) {
  progress.Step(0, 1, "Computing EPS Rank");
  s.stockDb().ComputeEPSRank(progress);
}

}  // namespace halvard::runs
