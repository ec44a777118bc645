#pragma once
// How the command files describe their commands, arguments and options. The parser behind it
// (CLI11) is included by command_line.cpp alone: its header costs seconds of compile time in
// every file that includes it, and the command files need none of it.
//
// Names follow the parser's rules: "SYMBOL" is a positional argument, "--list" an option,
// "-o,--output" an option with a short name.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace halvard::cli {

// One argument or option of a command, to refine after adding it.
class Argument {
 public:
  explicit Argument(CLI::Option* option) : option_(option) {}

  Argument& Required();
  Argument& InRange(double least, double most);
  Argument& OneOf(const std::vector<std::string>& choices);
  // The placeholder of the value in --help (NAME, FILE).
  Argument& ValueName(const std::string& name);
  // The value it starts with, shown in --help.
  Argument& ShowDefault();
  // "--save" alone as well as "--save LIST".
  Argument& ValueOptional();
  // A repeatable option that takes one value each time ("--set A --set B", never "--set A B").
  Argument& OneValueEach();
  // Whether the command line gave it (read once the command runs).
  bool Given() const;

 private:
  CLI::Option* option_;
};

// The program or one of its commands.
class Command {
 public:
  explicit Command(CLI::App* app) : app_(app) {}

  Command Subcommand(const std::string& name, const std::string& help);
  // The command does nothing by itself: one of its subcommands must follow.
  Command& NeedsSubcommand();

  Argument Add(const std::string& name, std::string& value, const std::string& help);
  Argument Add(const std::string& name, int& value, const std::string& help);
  Argument Add(const std::string& name, double& value, const std::string& help);
  Argument Add(const std::string& name, std::uint64_t& value, const std::string& help);
  // Every value given (a repeated option, or the rest of the positional arguments).
  Argument Add(const std::string& name, std::vector<std::string>& values, const std::string& help);
  // A number handed to `take` when the option is given.
  Argument Add(const std::string& name, std::function<void(double)> take, const std::string& help);
  Command& Flag(const std::string& name, bool& value, const std::string& help);

  // What the command does once its arguments are parsed.
  Command& OnRun(std::function<void()> run);

 private:
  CLI::App* app_;
};

// The whole command line: the program's description, its commands, and the parse.
class CommandLine {
 public:
  // versionText: what --version prints.
  CommandLine(const std::string& description, const std::string& program,
              const std::string& versionText);
  ~CommandLine();

  Command Program();

  // Parses the arguments and runs the command they name. Help and --version are printed with
  // status 0; an argument error is printed as "halvard: usage error: ..." with status 2. What the
  // command itself throws goes to the caller.
  int Run(int argc, char** argv);

 private:
  std::unique_ptr<CLI::App> app_;
};

}  // namespace halvard::cli
