#pragma once
// The version both programs print for --version.

#include <string>
#include <string_view>

namespace halvard::platform {

// The project's version, as "0.1.0".
std::string_view Version();

// What `PROGRAM --version` prints: "PROGRAM 0.1.0", and on a second line the commit the program
// was built from when the build knew it (a git checkout; "-dirty" when it had local changes).
std::string VersionText(std::string_view program);

}  // namespace halvard::platform
