// The one file of the command line that includes CLI11.

#include "command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "halvard/platform/message_text.h"
#include "nearest_name.h"

namespace halvard::cli {
namespace {

// The command the arguments reached before the error: the program or its deepest command.
const CLI::App* Reached(const CLI::App& program) {
  const CLI::App* reached = &program;
  while (!reached->get_subcommands().empty()) reached = reached->get_subcommands().front();
  return reached;
}

// When the command reached has commands of its own and a word was left over, that word was
// meant as one of them: it is named, with the nearest command when one is close.
std::optional<std::string> UnknownCommand(const CLI::App& program) {
  const CLI::App* reached = Reached(program);
  const auto commands = reached->get_subcommands([](const CLI::App*) { return true; });
  if (commands.empty()) return std::nullopt;
  for (const std::string& word : reached->remaining()) {
    if (word.empty() || word[0] == '-') continue;
    std::vector<std::string> names;
    for (const CLI::App* command : commands) names.push_back(command->get_name());
    std::string message = "unknown command " + platform::QuoteForMessage(word);
    if (const auto nearest = NearestName(word, names))
      message += "; did you mean " + *nearest + "?";
    return message;
  }
  return std::nullopt;
}

}  // namespace

Argument& Argument::Required() {
  option_->required();
  return *this;
}

Argument& Argument::InRange(double least, double most) {
  option_->check(CLI::Range(least, most));
  return *this;
}

Argument& Argument::OneOf(const std::vector<std::string>& choices) {
  option_->check(CLI::IsMember(choices));
  return *this;
}

Argument& Argument::ValueName(const std::string& name) {
  option_->type_name(name);
  return *this;
}

Argument& Argument::ShowDefault() {
  option_->capture_default_str();
  return *this;
}

Argument& Argument::ValueOptional() {
  option_->expected(0, 1);
  return *this;
}

Argument& Argument::OneValueEach() {
  option_->allow_extra_args(false);
  return *this;
}

bool Argument::Given() const {
  return option_->count() > 0;
}

Command Command::Subcommand(const std::string& name, const std::string& help) {
  return Command(app_->add_subcommand(name, help));
}

Command& Command::NeedsSubcommand() {
  app_->require_subcommand(1);
  return *this;
}

Argument Command::Add(const std::string& name, std::string& value, const std::string& help) {
  return Argument(app_->add_option(name, value, help));
}

Argument Command::Add(const std::string& name, int& value, const std::string& help) {
  return Argument(app_->add_option(name, value, help));
}

Argument Command::Add(const std::string& name, double& value, const std::string& help) {
  return Argument(app_->add_option(name, value, help));
}

Argument Command::Add(const std::string& name, std::uint64_t& value, const std::string& help) {
  return Argument(app_->add_option(name, value, help));
}

Argument Command::Add(const std::string& name, std::vector<std::string>& values,
                      const std::string& help) {
  return Argument(app_->add_option(name, values, help));
}

Argument Command::Add(const std::string& name, std::function<void(double)> take,
                      const std::string& help) {
  return Argument(app_->add_option_function<double>(
      name, [take = std::move(take)](const double& v) { take(v); }, help));
}

Command& Command::Flag(const std::string& name, bool& value, const std::string& help) {
  app_->add_flag(name, value, help);
  return *this;
}

Command& Command::OnRun(std::function<void()> run) {
  app_->callback(std::move(run));
  return *this;
}

CommandLine::CommandLine(const std::string& description, const std::string& program,
                         const std::string& versionText)
    : app_(std::make_unique<CLI::App>(description, program)) {
  // The parser ends the text with a line feed of its own.
  std::string text = versionText;
  while (!text.empty() && text.back() == '\n') text.pop_back();
  app_->set_version_flag("--version", text, "Print the version and exit");
}

CommandLine::~CommandLine() = default;

Command CommandLine::Program() {
  return Command(app_.get());
}

int CommandLine::Run(int argc, char** argv) {
  try {
    app_->parse(argc, argv);
  } catch (const CLI::Success& e) {  // --help, --version
    return app_->exit(e);
  } catch (const CLI::ParseError& e) {
    const auto unknown = UnknownCommand(*app_);
    std::cerr << app_->get_name() << ": usage error: " << (unknown ? *unknown : e.what()) << "\n"
              << "Run " << app_->get_name() << " --help for the commands and options.\n";
    return 2;
  }
  return 0;
}

}  // namespace halvard::cli
