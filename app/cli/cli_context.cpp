#include "cli_context.h"

#include "commands.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "halvard/data/file_parser.h"
#include "halvard/error.h"
#include "halvard/platform/clock.h"
#include "halvard/platform/message_text.h"
#include "halvard/platform/samples_folder.h"
#include "halvard/platform/text.h"
#include "halvard/runs/stale_prices.h"
#include "halvard/runs/start_session.h"

namespace halvard::cli {
namespace fs = std::filesystem;

namespace {

struct Assignment {
  std::string section, name, text;
};

Assignment ParseSet(const std::string& assignment) {
  const size_t slash = assignment.find('/');
  const size_t eq = assignment.find('=', slash == std::string::npos ? 0 : slash);
  if (slash == std::string::npos || eq == std::string::npos) {
    throw UsageError("--set " + platform::QuoteForMessage(assignment) +
                     ": expected \"Section/Value Name=text\"");
  }
  return {assignment.substr(0, slash), assignment.substr(slash + 1, eq - slash - 1),
          assignment.substr(eq + 1)};
}

bool IsServices(const Assignment& a) {
  return platform::EqualsIgnoreCase(a.section, settings::kServicesSection);
}

// A [Services] value is checked here, so a mistyped one is refused by every command, and
// applied by OpenServices for the commands that download.
void ApplySet(settings::Config& config, const std::string& assignment) {
  const Assignment a = ParseSet(assignment);
  if (IsServices(a)) {
    settings::ServiceSettings unused;
    settings::SetServiceSettingFromText(unused, a.name, a.text);
    return;
  }
  settings::SetSettingFromText(config, a.section, a.name, a.text);
}

}  // namespace

void SelectListWarningIfStale(runs::Session& session, const std::string& list) {
  session.SelectList(list);
  if (const auto stale = runs::StalePricesWarning(session, platform::Today())) {
    std::cerr << "halvard: warning: " << *stale << "\n";
  }
}

fs::path SamplesFolder() {
  return platform::FindSamplesFolder({HALVARD_INSTALLED_SAMPLES, HALVARD_SOURCE_SAMPLES});
}

std::unique_ptr<runs::Session> OpenSession(const GlobalOptions& options, StartMode mode) {
  auto session = std::make_unique<runs::Session>(runs::SettingsStoreAt(options.configFile));
  const runs::StartReport report = runs::StartSession(
      *session, {.stockDir = options.stockDir,
                 .listDir = options.listDir,
                 .samples = SamplesFolder(),
                 .prepareFolders = mode != StartMode::kSettingsOnly,
                 .startUp = mode == StartMode::kFull || mode == StartMode::kIndexMayFail,
                 .indexMayFail = mode == StartMode::kIndexMayFail});
  for (const runs::StartNote& note : report.notes) {
    // What the samples made is a line a folder, each ending in a line feed; a problem (the index
    // that the downloads may fetch again) is one line.
    if (note.kind == runs::StartNote::Kind::kSamplesCopied) {
      std::cerr << "halvard: first run: " << note.text;
    } else {
      std::cerr << "halvard: warning: " << note.text << "\n";
    }
  }
  if (report.indexMissing) {
    std::cerr << "halvard: warning: " << data::kIndexMissingMessage << "\n";
  }
  for (const std::string& s : options.sets) ApplySet(session->config, s);
  if (options.jobs > 0) ApplySet(session->config, "Batch/Jobs=" + std::to_string(options.jobs));
  return session;
}

void WarnIfKeysWereExposed(const runs::Session& session) {
  if (const std::string warning = settings::ProtectServiceKeys(session.store()); !warning.empty()) {
    std::cerr << "halvard: warning: " << warning << "\n";
  }
}

settings::ServiceSettings OpenServices(const GlobalOptions& options, const runs::Session& session) {
  WarnIfKeysWereExposed(session);
  settings::ServiceSettings services = settings::ReadServiceSettings(session.store());
  for (const std::string& s : options.sets) {
    const Assignment a = ParseSet(s);
    if (IsServices(a)) settings::SetServiceSettingFromText(services, a.name, a.text);
  }
  return services;
}

void AddSymbolAndView(Command& command, std::string& symbol, int& view) {
  command.Add("SYMBOL", symbol, "The symbol (its price file is SYMBOL.txt)").Required();
  command
      .Add("--view", view,
           "1 five days, 2 one month, 3 three months, 4 six months, 5 one year (default: "
           "the View/Current setting)")
      .InRange(1, 5);
}

void AddJobsOption(Command& command, const GlobalOptions& options) {
  command
      .Add("--jobs", options.jobs,
           "Threads that load and test the stocks (default: the Batch/Jobs setting, 0 for every "
           "core); the output is the same whatever the number")
      .InRange(1, 1024);
}

void ShowSymbolOrFail(runs::Session& session, const std::string& symbol) {
  if (!session.ShowSymbol(symbol)) {
    throw Error("no price file for " + symbol + ": " + session.StockPath(symbol) +
                " does not exist");
  }
}

void AppendWithLineFeeds(std::string_view text, std::string& out) {
  // Whole lines at a time (a big sweep's report has millions); each CR of a CR LF is left out.
  size_t at = 0;
  for (size_t crlf = text.find("\r\n"); crlf != std::string_view::npos;
       crlf = text.find("\r\n", at)) {
    out.append(text.substr(at, crlf - at));
    at = crlf + 1;
  }
  out.append(text.substr(at));
}

std::string WithLineFeeds(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  AppendWithLineFeeds(text, out);
  return out;
}

}  // namespace halvard::cli
