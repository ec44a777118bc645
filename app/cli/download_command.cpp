// halvard download SYMBOL... | --list NAME... [--from M/d/yyyy] [--to M/d/yyyy] [--skip-existing]
// [--json]: price histories into the stock files folder, as the download window fetches them.

#include <iostream>

#include "commands.h"
#include "download_context.h"
#include "halvard/data/download_schedule.h"
#include "halvard/platform/clock.h"
#include "halvard/platform/date_text.h"
#include "halvard/platform/message_text.h"
#include "halvard/runs/report_json.h"
#include "json_output.h"

namespace halvard::cli {
namespace {

struct DownloadArgs {
  std::vector<std::string> symbols;
  std::vector<std::string> lists;
  std::string from;
  std::string to;
  bool skipExisting = false;
  bool json = false;
};

double DateOption(const std::string& text, const char* option, double otherwise) {
  if (text.empty()) return otherwise;
  const auto date = platform::ParseDate(text);
  if (!date)
    throw UsageError(std::string(option)
                         .append(" ")
                         .append(platform::QuoteForMessage(text))
                         .append(" is not a date (M/d/yyyy)"));
  return *date;
}

// The download button for each list in turn: the log entries, the list, the answer (on stdout
// when done, unless the answers go into the JSON document).
bool DownloadLists(DownloadContext& c, const std::vector<std::string>& lists,
                   const runs::DownloadRequest& request, bool json,
                   std::vector<runs::ListDownload>& ended) {
  const auto paths = ExistingLists(c.session->config, lists);
  bool all = true;
  for (size_t i = 0; i < paths.size(); ++i) {
    const auto answer = c.downloads.DownloadList(lists[i], paths[i], request);
    if (!answer) throw Interrupted{kDownloadsKept};
    if (!answer->done) {
      std::cerr << WithLineFeeds(answer->text());
    } else if (!json) {
      std::cout << answer->text() << "\n" << std::flush;
    }
    all &= answer->done;
    ended.push_back({lists[i], *answer});
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
  const runs::DownloadRequest request{from, to, args.skipExisting};
  std::vector<runs::ListDownload> lists;
  const bool all = args.lists.empty()
                       ? context.downloads.DownloadSymbols(args.symbols, request)
                       : DownloadLists(context, args.lists, request, args.json, lists);
  if (context.progress.Cancelled()) throw Interrupted{kDownloadsKept};
  context.ReportServed();
  if (args.json) {
    PrintJson(runs::DownloadJson(request, context.downloads.downloader().outcomes(), lists));
  }
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
  AddJsonFlag(command, args->json);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
