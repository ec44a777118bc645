#include "halvard/engine/stock_view.h"

#include <string>

#include "halvard/data/file_parser.h"
#include "halvard/error.h"

namespace halvard::engine {

void ComputeRSLine(StockView& v) {
  if (!v.rsAvailable || v.barCount <= 0) return;
  v.rsMin = 10000;
  v.rsMax = 0;
  // Read through a const reference: the non-const access is for writing, and allocates.
  const auto& index = v.indexClose;
  for (int i = 0; i < v.barCount; ++i) {
    // The line holds 366 days; a longer history ends the computation there, with the values so
    // far kept and no head-room added.
    if (i >= StockView::kRsValues) return;
    double rs = 0;
    if (index[i] > 0) {
      rs = v.barClose[i] / index[i];
    } else if (i == 0) {
      return;  // nothing to carry forward on the newest day
    } else {
      rs = v.rsLine[i - 1];
    }
    v.rsLine[i] = rs;
    if (rs < v.rsMin) v.rsMin = rs;
    if (rs > v.rsMax) v.rsMax = rs;
  }
  v.rsMin -= v.rsMin / 10;
  v.rsMax += v.rsMax / 10;
}

void ComputeRSAverages(const StockView& v, double& avg, double& prevAvg) {
  avg = 0;
  prevAvg = 0;
  if (!v.rsAvailable || v.barCount <= 0) return;
  const int n = v.barCount;
  double sum = 0;
  double rs = 0;
  for (int i = 0; i < n; ++i) {
    if (v.indexClose[i] > 0) {
      rs = v.barClose[i] / v.indexClose[i];
    } else if (i == 0) {
      throw Error(v.stockFilePath + ": the index has no close on the newest day (" +
                  std::string(data::kIndexFileName) + "), so there is no RS to start from");
    }
    sum += rs;
    // The previous average leaves out the oldest 69 days; the scans compare it with the whole.
    if (i + 1 == n - 69) prevAvg = sum / (n - 69);
  }
  avg = sum / n;
}

}  // namespace halvard::engine
