#pragma once
// PaneRedirect: while it lives, one of the engine's panes (its log or its result rows) goes to
// another sink; the pane before it is back when it ends, however the run ends.

#include "halvard/engine/back_tester.h"
#include "halvard/platform/text_sink.h"

namespace halvard::runs {

template <platform::TextSink& (engine::BackTester::*Pane)() const,
          void (engine::BackTester::*SetPane)(platform::TextSink&)>
class PaneRedirect {
 public:
  PaneRedirect(engine::BackTester& tester, platform::TextSink& to)
      : tester_(tester), previous_((tester.*Pane)()) {
    (tester.*SetPane)(to);
  }
  ~PaneRedirect() { (tester_.*SetPane)(previous_); }
  PaneRedirect(const PaneRedirect&) = delete;
  PaneRedirect& operator=(const PaneRedirect&) = delete;

 private:
  engine::BackTester& tester_;
  platform::TextSink& previous_;
};

// The batch report's table takes the result rows for one batch; a backtest made for later keeps
// its log apart.
using ResultsRedirect = PaneRedirect<&engine::BackTester::results, &engine::BackTester::SetResults>;
using LogRedirect = PaneRedirect<&engine::BackTester::log, &engine::BackTester::SetLog>;

}  // namespace halvard::runs
