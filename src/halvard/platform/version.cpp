#include "halvard/platform/version.h"

#include "halvard_build_version.h"  // generated at build time by cmake/version.cmake

namespace halvard::platform {

std::string_view Version() {
  return HALVARD_VERSION;
}

std::string VersionText(std::string_view program) {
  std::string text(program);
  text.append(" ").append(Version()).append("\n");
  const std::string_view commit = HALVARD_COMMIT;
  if (!commit.empty()) text.append("built from commit ").append(commit).append("\n");
  return text;
}

}  // namespace halvard::platform
