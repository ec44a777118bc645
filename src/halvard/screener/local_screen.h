#pragma once
// The screen run on the local data, since no public screener answers the service's query: the
// price files of the stock files folder and the stock database. It applies the criteria that
// data can answer (local_readings.h says how each figure is read) and names the others in the
// result's notApplied.

#include <filesystem>

#include "halvard/platform/progress.h"
#include "halvard/screener/criteria.h"
#include "halvard/screener/local_readings.h"
#include "halvard/screener/screen_result.h"
#include "halvard/screener/stock_rows.h"

namespace halvard::screener {

// Whether a stock with these readings meets every criterion the local data answers. A set
// criterion whose reading is missing fails; texts compare whole, without regard to case.
bool PassesLocally(const ScreenCriteria& c, const LocalReadings& readings);

// Visits the price files in ListPriceFiles order, one progress step each, and keeps the
// symbols that pass; index files (a symbol starting "^") are stepped over unread, as they are
// no stocks. A cancel stops between two files. A file that does not load is skipped and
// named in the result's skipped. With more than one job the files are read and screened on that
// many threads, the steps and findings kept in the folder's order.
ScreenResult ScreenPriceFiles(const std::filesystem::path& stockFolder, const StockRows& rows,
                              const ScreenCriteria& c, platform::Progress& progress, int jobs = 1);

}  // namespace halvard::screener
