// halvard config show [--json] | get SECTION NAME | set SECTION NAME TEXT

#include <iostream>

#include "commands.h"
#include "halvard/platform/text.h"
#include "halvard/runs/report_json.h"
#include "halvard/settings/services.h"
#include "json_output.h"

namespace halvard::cli {
namespace {

struct ConfigArgs {
  std::string section;
  std::string name;
  std::string text;
  bool json = false;
};

bool IsServices(const std::string& section) {
  return platform::EqualsIgnoreCase(section, settings::kServicesSection);
}

// The [Services] section as the file holds it, every missing value at its default.
settings::ServiceSettings StoredServices(const runs::Session& session) {
  return settings::ReadServiceSettings(session.store());
}

// SECTION NAME: one setting, named as config show prints it.
void AddSettingName(Command& command, ConfigArgs& args) {
  command.Add("SECTION", args.section, "The section, as config show prints it before the /")
      .Required();
  command.Add("NAME", args.name, "The value name, as config show prints it after the /").Required();
}

}  // namespace

void AddConfigCommand(Command& program, const GlobalOptions& options) {
  auto config = program.Subcommand("config", "Show or change the settings");
  config.NeedsSubcommand();
  auto args = std::make_shared<ConfigArgs>();

  auto show = config.Subcommand("show", "Every setting as Section/Value Name=text");
  AddJsonFlag(show, args->json);
  show.OnRun([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    const auto values = settings::SettingsAsText(session->config);
    const auto services = settings::ServiceSettingsAsText(StoredServices(*session));
    if (args->json) {
      PrintJson(runs::SettingsJson(values, services));
      return;
    }
    for (const auto& s : values) {
      std::cout << s.section << "/" << s.name << "=" << s.text << "\n";
    }
    for (const auto& s : services) {
      std::cout << settings::kServicesSection << "/" << s.name << "=" << s.text << "\n";
    }
  });

  auto get = config.Subcommand("get", "One setting's value");
  AddSettingName(get, *args);
  get.OnRun([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    std::cout << (IsServices(args->section)
                      ? settings::GetServiceSettingText(StoredServices(*session), args->name).text
                      : settings::GetSettingText(session->config, args->section, args->name).text)
              << "\n";
  });

  auto set = config.Subcommand("set", "Change one setting in the settings file");
  AddSettingName(set, *args);
  set.Add("TEXT", args->text, "The new value, as config show prints it after the =").Required();
  set.OnRun([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    if (IsServices(args->section)) {
      settings::ServiceSettings services = StoredServices(*session);
      const auto stored = settings::SetServiceSettingFromText(services, args->name, args->text);
      session->store().SaveString(settings::kAppName, settings::kServicesSection, stored.name,
                                  stored.text);
      WarnIfKeysWereExposed(*session);
      std::cout << settings::kServicesSection << "/" << stored.name << "=" << stored.text << "\n";
      return;
    }
    const auto stored =
        settings::SetSettingFromText(session->config, args->section, args->name, args->text);
    session->store().SaveString(settings::kAppName, stored.section, stored.name, stored.text);
    std::cout << stored.section << "/" << stored.name << "=" << stored.text << "\n";
  });
}

}  // namespace halvard::cli
