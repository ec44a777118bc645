// The settings file over any text: every setting and the services section read from it, then
// written back and read again, which must give the same settings. The file is held in memory, as
// the store reads it.

#include <cstdlib>

#include "fuzz_support.h"
#include "halvard/settings/config.h"
#include "halvard/settings/services.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace halvard;
  const auto stored =
      settings::MRegistry::InMemory(std::string(fuzz::Text(data, size)), "settings.ini");
  settings::Config config;
  fuzz::Refusable([&] {
    config.ReadConfig(stored);
    settings::ReadServiceSettings(stored);
    const auto written = settings::MRegistry::InMemory("", "written.ini");
    config.WriteConfig(written);
    settings::Config back;
    back.ReadConfig(settings::MRegistry::InMemory(written.MemoryText(), "written.ini"));
    const auto before = settings::SettingsAsText(config);
    const auto after = settings::SettingsAsText(back);
    if (after.size() != before.size()) abort();
    for (size_t i = 0; i < before.size(); ++i) {
      // A setting the program stored that does not read back.
      if (after[i].text != before[i].text) abort();
    }
  });
  return 0;
}
