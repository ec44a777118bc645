#pragma once
// How a long run reports its progress and learns that the user wants it stopped. Runs call
// Step once per stock and stop between two stocks when Cancelled() turns true; what they
// computed so far is kept and reported.

#include <string_view>

namespace halvard::platform {

class Progress {
 public:
  virtual ~Progress() = default;
  // done of total items, with the text the program shows for it ("Processing stock #3 of 9").
  virtual void Step(int done, int total, std::string_view text) = 0;
  virtual bool Cancelled() const = 0;
};

// For runs nobody watches: tests, benchmarks, scripts.
class NoProgress : public Progress {
 public:
  void Step(int, int, std::string_view) override {}
  bool Cancelled() const override { return false; }
};

}  // namespace halvard::platform
