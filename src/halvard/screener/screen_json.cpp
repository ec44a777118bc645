#include "halvard/screener/screen_json.h"

namespace halvard::screener {

runs::JsonDocument ScreenJson(const ScreenResult& result) {
  runs::JsonDocument out;
  out["symbols"] = result.symbols;
  out["skipped"] = result.skipped;
  out["notApplied"] = result.notApplied;
  out["pages"] = result.pages;
  out["pageCapReached"] = result.pageCapReached;
  return out;
}

}  // namespace halvard::screener
