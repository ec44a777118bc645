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

}  // namespace

void AddConfigCommand(CLI::App& app, const GlobalOptions& options) {
  auto* config = app.add_subcommand("config", "Show or change the settings");
  config->require_subcommand(1);
  auto args = std::make_shared<ConfigArgs>();

  auto* show = config->add_subcommand("show", "Every setting as Section/Value Name=text");
  show->callback([&options] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    for (const auto& s : settings::SettingsAsText(session->config)) {
      std::cout << s.section << "/" << s.name << "=" << s.text << "\n";
    }
  });

  auto* get = config->add_subcommand("get", "One setting's value");
  get->add_option("SECTION", args->section)->required();
  get->add_option("NAME", args->name)->required();
  get->callback([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    std::cout << settings::GetSettingText(session->config, args->section, args->name).text << "\n";
  });

  auto* set = config->add_subcommand("set", "Change one setting in the settings file");
  set->add_option("SECTION", args->section)->required();
  set->add_option("NAME", args->name)->required();
  set->add_option("TEXT", args->text)->required();
  set->callback([&options, args] {
    const auto session = OpenSession(options, StartMode::kSettingsOnly);
    const auto stored =
        settings::SetSettingFromText(session->config, args->section, args->name, args->text);
    session->store().SaveString(settings::kAppName, stored.section, stored.name, stored.text);
    std::cout << stored.section << "/" << stored.name << "=" << stored.text << "\n";
  });
}

}  // namespace halvard::cli
