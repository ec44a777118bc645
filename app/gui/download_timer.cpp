#include "download_timer.h"

#include "halvard/data/download_schedule.h"
#include "halvard/platform/clock.h"

namespace halvard::gui {

DownloadTimer::DownloadTimer(const settings::Config& config, QObject* parent)
    : QObject(parent), config_(config) {
  setObjectName(QStringLiteral("downloadTimer"));
  timer_.setInterval(kIntervalMilliseconds);
  connect(&timer_, &QTimer::timeout, this, [this] { Tick(platform::Now()); });
}

bool DownloadTimer::Tick(double now) {
  if (paused_ || data::CheckSchedule(now, config_) != data::ScheduleVerdict::kDue) return false;
  emit due();
  return true;
}

}  // namespace halvard::gui
