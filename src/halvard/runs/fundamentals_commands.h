#pragma once
// The Tools menu's fundamentals commands as both front ends run them: company data and EPS
// lines for every price file, the RS averages with the RS rank, the EPS rank. Each visits the
// files "*.txt" of the stock files folder in name order, one progress step a file (the step's
// text is the status the main window shows), and stops between two files on a cancel with
// everything written so far kept.

#include <string>
#include <vector>

#include "halvard/fundamentals/fundamentals_source.h"
#include "halvard/fundamentals/stock_data_store.h"
#include "halvard/platform/http_client.h"
#include "halvard/platform/progress.h"
#include "halvard/runs/session.h"

namespace halvard::runs {

// "Downloading Company Data for SYMBOL": the source's company data for every symbol whose stored
// name is still empty. Returns "SYMBOL: why" for every symbol the source had nothing for.
std::vector<std::string> DownloadCompanyData(Session& s, fundamentals::FundamentalsSource& source,
                                             platform::Progress& progress);
// The same from the quotes line and the profile page (getDataForStock).
void DownloadCompanyData(Session& s, const fundamentals::CompanyServices& services,
                         platform::Progress& progress);

// "Downloading EPS Data for SYMBOL": the source's EPS line for every symbol; eps.dat is written
// after every file while the count of successes is a multiple of ten, and once more at the end.
// Returns "SYMBOL: why" for every symbol the source had no line for.
std::vector<std::string> DownloadEPSData(Session& s, fundamentals::FundamentalsSource& source,
                                         platform::Progress& progress);
// The same from the quotes line (downloadEPS).
void DownloadEPSData(Session& s, platform::HttpClient& http, const std::string& quotesHost,
                     platform::Progress& progress);

// "Computing RS Average for SYMBOL": the RS averages of every price file that loads, stored with
// SetRSAvg; then ComputeRSRank (not after a cancel). A file that does not load is skipped; the
// result names each such file with the reason.
std::vector<std::string> ComputeRSRankCommand(Session& s, platform::Progress& progress);

// "Computing EPS Rank": ComputeEPSRank.
void ComputeEPSRankCommand(Session& s, platform::Progress& progress);

}  // namespace halvard::runs
