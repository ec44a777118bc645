#pragma once
// DownloadTimer (downloadTimer): ticks once a minute from start-up to the end and, on each tick,
// applies the once-a-day rule of the scheduled download. When the download is due it says so
// through due(); the download window, which holds the chosen lists, answers it.

#include <QObject>
#include <QTimer>

#include "halvard/settings/config.h"

namespace halvard::gui {

class DownloadTimer : public QObject {
  Q_OBJECT

 public:
  static constexpr int kIntervalMilliseconds = 60 * 1000;

  DownloadTimer(const settings::Config& config, QObject* parent = nullptr);

  void Start() { timer_.start(); }
  bool isActive() const { return timer_.isActive(); }
  // While a long run holds the window, a tick waits for the next one.
  void setPaused(bool paused) { paused_ = paused; }

  // One tick at the moment now (a day count, the time of day as its fraction): true, and due()
  // emitted, when the scheduled download should start.
  bool Tick(double now);

 signals:
  void due();

 private:
  const settings::Config& config_;
  QTimer timer_;
  bool paused_ = false;
};

}  // namespace halvard::gui
