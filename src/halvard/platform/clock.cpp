#include "halvard/platform/clock.h"

#include <ctime>

#include "halvard/platform/date_text.h"

namespace halvard::platform {

double Today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return SerialFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday});
}

double Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const double seconds = local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
  return SerialFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}) + seconds / 86400;
}

}  // namespace halvard::platform
