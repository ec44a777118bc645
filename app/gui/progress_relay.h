#pragma once
// ProgressRelay: passes a run's progress on to the main window's progress window (whose Cancel
// it answers to) and lets a secondary window see each step too, for its own labels and status
// bar.

#include <functional>
#include <string_view>
#include <utility>

#include "halvard/platform/progress.h"

namespace halvard::gui {

class ProgressRelay : public platform::Progress {
 public:
  using Seen = std::function<void(int done, int total, std::string_view text)>;

  ProgressRelay(platform::Progress& to, Seen seen) : to_(to), seen_(std::move(seen)) {}

  void Step(int done, int total, std::string_view text) override {
    seen_(done, total, text);
    to_.Step(done, total, text);
  }
  bool Cancelled() const override { return to_.Cancelled(); }

 private:
  platform::Progress& to_;
  Seen seen_;
};

}  // namespace halvard::gui
