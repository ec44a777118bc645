#pragma once
// The stock and watch-list folders on a fresh machine.

#include <filesystem>
#include <string>

#include "halvard/settings/config.h"

namespace halvard::settings {

// Makes sure both configured folders exist. A default folder that does not exist yet is
// created and filled with the bundled samples (when samplesDir has them), so a first run works
// at once; the returned text tells the user so (empty when nothing was done). A folder the user
// chose that does not exist is a halvard::Error saying how to point at other folders or at the
// samples.
std::string PrepareFolders(const Config& config, const std::filesystem::path& samplesDir);

}  // namespace halvard::settings
