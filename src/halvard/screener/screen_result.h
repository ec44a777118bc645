#pragma once
// What a screen found, and what the user should be told about how it was found.

#include <string>
#include <vector>

namespace halvard::screener {

struct ScreenResult {
  std::vector<std::string> symbols;  // in the order found, each once
  // The criteria that were set but could not be applied, by their labels ("market
  // capitalisation", "beta"): the local screen cannot answer every criterion.
  std::vector<std::string> notApplied;
  // Price files that did not load, each as the loader's message (file, line, problem).
  std::vector<std::string> skipped;
  int pages = 0;                // pages fetched from the service
  bool pageCapReached = false;  // the service still sent new symbols on the last page allowed
  bool cancelled = false;       // stopped by the user; symbols holds what was found so far
};

}  // namespace halvard::screener
