#pragma once
// Runs that go on beside the event loop: a download waits on the network (a slow answer, a
// retry wait the service asked for), and the windows must stay painted and their Cancel must
// answer meanwhile.

#include <QObject>
#include <functional>

#include "halvard/platform/progress.h"

namespace halvard::gui {

// Runs work on a thread of its own while this thread's event loop goes on, and returns when
// work has. An exception work throws is thrown again here. work must not touch a widget.
void RunAside(const std::function<void()>& work);

// The progress a run on another thread reports to: each step reaches shown on the thread that
// made this, in order, through its event loop. Cancelled() is shown's, which must be safe to
// ask from any thread (the progress window's is).
class QueuedProgress : public platform::Progress {
 public:
  explicit QueuedProgress(platform::Progress& shown) : shown_(shown) {}
  // The steps still queued are shown before it goes.
  ~QueuedProgress() override;
  QueuedProgress(const QueuedProgress&) = delete;
  QueuedProgress& operator=(const QueuedProgress&) = delete;

  void Step(int done, int total, std::string_view text) override;
  bool Cancelled() const override { return shown_.Cancelled(); }

 private:
  platform::Progress& shown_;
  QObject receiver_;  // lives on the making thread; the queued steps are its events
};

}  // namespace halvard::gui
