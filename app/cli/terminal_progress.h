#pragma once
// Progress of a long run as the command line shows it: a line on stderr with the run's own
// text and a bar, redrawn in place, only when stderr is a terminal. Ctrl-C asks the run to stop
// between two stocks (a download stops its request or wait at once); a second Ctrl-C ends the
// program at once.

#include <chrono>
#include <string_view>

#include "halvard/platform/progress.h"

namespace halvard::cli {

class TerminalProgress : public platform::Progress {
 public:
  TerminalProgress();
  ~TerminalProgress() override;
  TerminalProgress(const TerminalProgress&) = delete;
  TerminalProgress& operator=(const TerminalProgress&) = delete;

  void Step(int done, int total, std::string_view text) override;
  bool Cancelled() const override;
  // Whether Ctrl-C was pressed while a progress was shown: what a request or a wait polls.
  static bool InterruptRequested();
  // Takes the progress line away before other text goes to the same terminal; the next step
  // draws it again.
  void ClearLine();

 private:
  bool terminal_;
  bool drawn_ = false;
  std::chrono::steady_clock::time_point lastDraw_{};
};

// Thrown once a cancelled run has printed what it did: the program says what became of its
// files and ends with status 130.
struct Interrupted {
  const char* outcome = "nothing was saved";
};

}  // namespace halvard::cli
