// halvard schedule [--list NAME...] [--skip-existing]: one tick of the download timer. When the
// scheduled download is due it downloads the lists over the last twelve months and stores the
// date; otherwise it says why not. Run every few minutes (cron, a systemd timer), it gives the
// once-a-day download.

#include <iostream>

#include "commands.h"
#include "download_context.h"
#include "halvard/data/download_schedule.h"
#include "halvard/error.h"
#include "halvard/platform/clock.h"
#include "halvard/runs/auto_download.h"

namespace halvard::cli {
namespace {

struct ScheduleArgs {
  std::vector<std::string> lists;
  bool skipExisting = false;
};

void Run(const GlobalOptions& options, const ScheduleArgs& args) {
  DownloadContext c(options);
  settings::Config& config = c.session->config;
  const data::ScheduleVerdict verdict = data::CheckSchedule(platform::Now(), config);
  if (verdict != data::ScheduleVerdict::kDue) {
    std::cout << "Nothing to do: " << data::ScheduleVerdictText(verdict, config) << "\n";
    return;
  }
  const std::vector<std::string> lists =
      args.lists.empty() ? data::ChosenDownloadLists(config) : args.lists;
  if (lists.empty()) {
    throw Error("no watch list to download: give --list or choose them in Download/Lists");
  }
  ExistingLists(config, lists);
  const bool all =
      runs::AutoDownload(lists, args.skipExisting, platform::Today(), c.downloads.downloader(),
                         config, c.session->store(), c.progress);
  if (c.progress.Cancelled()) throw Interrupted{kDownloadsKept};
  std::cout << WithLineFeeds(data::DownloadDateLabel(config.downloadDate)) << "\n";
  c.ReportServed();
  // The scheduled download shows no failures; the event log has them.
  if (!all) std::cerr << "halvard: some symbols failed; see " << c.log.file().string() << "\n";
}

}  // namespace

void AddScheduleCommand(Command& program, const GlobalOptions& options) {
  auto args = std::make_shared<ScheduleArgs>();
  auto command =
      program.Subcommand("schedule",
                         "The once-a-day download: when Download/Enabled is on, Download/Time has "
                         "passed and nothing was downloaded today, download the lists' last year");
  command.Add("--list", args->lists,
              "The watch lists to download (default: the Download/Lists setting, the lists "
              "chosen in the desktop program's Downloader)");
  AddSkipExisting(command, args->skipExisting);
  command.OnRun([&options, args] { Run(options, *args); });
}

}  // namespace halvard::cli
