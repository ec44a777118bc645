// halvard config show | get SECTION NAME | set SECTION NAME TEXT

#include <iostream>

#include "commands.h"

namespace halvard::cli {
namespace {

struct ConfigArgs {
  std::string section;
  std::string name;
  std::string text;
};

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
  show.OnRun([&options] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    for (const auto& s : settings::SettingsAsText(session->config)) {
      std::cout << s.section << "/" << s.name << "=" << s.text << "\n";
    }
  });

  auto get = config.Subcommand("get", "One setting's value");
  AddSettingName(get, *args);
  get.OnRun([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    std::cout << settings::GetSettingText(session->config, args->section, args->name).text << "\n";
  });

  auto set = config.Subcommand("set", "Change one setting in the settings file");
  AddSettingName(set, *args);
  set.Add("TEXT", args->text, "The new value, as config show prints it after the =").Required();
  set.OnRun([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    const auto stored =
        settings::SetSettingFromText(session->config, args->section, args->name, args->text);
    session->store().SaveString(settings::kAppName, stored.section, stored.name, stored.text);
    std::cout << stored.section << "/" << stored.name << "=" << stored.text << "\n";
  });
}

}  // namespace halvard::cli
