// halvard download SYMBOL... | --list NAME... [--from M/d/yyyy] [--to M/d/yyyy] [--skip-existing]:
// price histories into the stock files folder, as the download window fetches them.

#include <iostream>

#include "commands.h"
#include "download_context.h"
#include "halvard/data/download_schedule.h"
#include "halvard/platform/clock.h"
#include "halvard/platform/date_text.h"
#include "terminal_progress.h"

namespace halvard::cli {
namespace {

using platform::EventType;

struct DownloadArgs {
  std::vector<std::string> symbols;
  std::vector<std::string> lists;
  std::string from;
  std::string to;
  bool skipExisting = false;
};

double DateOption(const std::string& text, const char* option, double otherwise) {
  if (text.empty()) return otherwise;
  const auto date = platform::ParseDate(text);
  if (!date) throw UsageError(std::string(option) + " \"" + text + "\" is not a date (M/d/yyyy)");
  return *date;
}

// Returns true when every symbol was downloaded (or skipped).
bool DownloadSymbols(DownloadContext& c, const DownloadArgs& args, double from, double to) {
  TerminalProgress progress;
  bool all = true;
  const int total = static_cast<int>(args.symbols.size());
  for (int i = 0; i < total && !progress.Cancelled(); ++i) {
    progress.Step(i, total, args.symbols[i]);
    all &= c.downloader.DownloadSymbol(args.symbols[i], from, to, args.skipExisting);
  }
  if (progress.Cancelled()) throw Interrupted{kDownloadsKept};
  return all;
}

// The download button for each list in turn: the log entries, the list, the answer.
bool DownloadLists(DownloadContext& c, const DownloadArgs& args, double from, double to) {
  const auto paths = ExistingLists(c.session->config, args.lists);
  bool all = true;
  for (size_t i = 0; i < paths.size(); ++i) {
    const std::string& name = args.lists[i];
    c.log.Write(EventType::kInformation, "Downloading WatchList : " + name);
    TerminalProgress progress;
    const bool done = c.downloader.DownloadList(paths[i], from, to, args.skipExisting, progress);
    if (progress.Cancelled()) throw Interrupted{kDownloadsKept};
    if (done) {
      std::cout << "Inc List Successfully download\n" << std::flush;
      c.log.Write(EventType::kInformation, "Done Downloading WatchList : " + name);
    } else {
      std::cerr << "Error downloading inc list - " << WithLineFeeds(c.downloader.errorText());
      c.log.Write(EventType::kInformation, "Error Downloading WatchList : " + name);
    }
    all &= done;
  }
  return all;
}

void Run(const GlobalOptions& options, const DownloadArgs& args) {
  if (args.symbols.empty() == args.lists.empty()) {
    throw UsageError("give either symbols or --list NAME..., not both");
  }
  const double today = platform::Today();
  const double to = DateOption(args.to, "--to", today);
  const double from = DateOption(args.from, "--from", data::MonthsBefore(to, 12));
  if (from > to) throw UsageError("--from is later than --to");
  DownloadContext context(options);
  const bool all = args.lists.empty() ? DownloadSymbols(context, args, from, to)
                                      : DownloadLists(context, args, from, to);
  if (!all) throw Failed{};
}

}  // namespace

void AddDownloadCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<DownloadArgs>();
  auto command =
      program.Subcommand("download",
                         "Download price histories into the stock files folder ([Services] chooses "
                         "the service)");
  command.Add("SYMBOL", args->symbols, "The symbols to download");
  command.Add("--list", args->lists, "Download every symbol of these watch lists");
  command.Add("--from", args->from, "The first day (M/d/yyyy); default a year before --to");
  command.Add("--to", args->to, "The last day (M/d/yyyy); default today");
  AddSkipExisting(command, args->skipExisting);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
