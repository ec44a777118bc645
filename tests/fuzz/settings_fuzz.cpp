// The settings file over any text: every setting and the services section read from it, then
// written back and read again, which must give the same settings.

#include <cstdlib>

#include "fuzz_support.h"
#include "halvard/settings/config.h"
#include "halvard/settings/services.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const auto file = fuzz::ScratchFile("settings.ini", fuzz::Text(data, size));
  settings::Config config;
  fuzz::Refusable([&] {
    config.ReadConfig(settings::MRegistry(file));
    settings::ReadServiceSettings(settings::MRegistry(file));
    const auto written = fuzz::ScratchFolder() / "written.ini";
    std::filesystem::remove(written);
    config.WriteConfig(settings::MRegistry(written));
    settings::Config back;
    back.ReadConfig(settings::MRegistry(written));
    if (settings::SettingsAsText(back).size() != settings::SettingsAsText(config).size()) abort();
    for (size_t i = 0; i < settings::SettingsAsText(config).size(); ++i) {
      if (settings::SettingsAsText(back)[i].text != settings::SettingsAsText(config)[i].text) {
        abort();  // a setting the program stored does not read back
      }
    }
  });
  return 0;
}
