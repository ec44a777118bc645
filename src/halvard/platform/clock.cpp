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

}  // namespace halvard::platform
