// The Tools menu's commands over the price files of the stock folder: the fundamentals and the
// check of the files, each a long run with the progress window, as the command line runs them.

#include <QAction>
#include <QMenu>

#include "dialogs.h"
#include "halvard/data/price_check.h"
#include "halvard/fundamentals/fundamentals_source.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/runs/stock_walk.h"
#include "halvard/settings/services.h"
#include "main_frm.h"
#include "text_window.h"

namespace halvard::gui {

bool MainFrm::AskForContactIfNeeded(settings::ServiceSettings& services) {
  if (!fundamentals::NeedsContact(services)) return true;
  const std::optional<QString> typed = dialogs_.askText(
      this, QStringLiteral("Contact"),
      QStringLiteral("The SEC asks every client for a contact with each request.\nYour name "
                     "and e-mail (kept as [Services] Contact):"));
  if (!typed) return false;
  const auto stored =
      settings::SetServiceSettingFromText(services, "Contact", typed->toStdString());
  session_->store().SaveString(settings::kAppName, settings::kServicesSection, stored.name,
                               stored.text);
  return true;
}

void MainFrm::AddTools(QMenu* tools) {
  QAction* company = tools->addAction(QStringLiteral("Download &Company Data"));
  company->setObjectName(QStringLiteral("downloadCompanyDataMnuItem"));
  connect(company, &QAction::triggered, this, [this] {
    runs::Session& s = *session_;
    settings::ServiceSettings services;
    bool ready = false;
    Guarded([&] {
      services = settings::ReadServiceSettings(s.store());
      ready = AskForContactIfNeeded(services);
    });
    if (!ready) return;
    std::vector<std::string> missed;
    RunLong([&](platform::Progress& progress) {
      const auto source = fundamentals::MakeFundamentalsSource(services);
      missed = runs::DownloadCompanyData(s, *source, progress);
    });
    for (const std::string& m : missed) {
      eventLog_.Write(platform::EventType::kInformation, "No company data for " + m);
    }
  });

  QAction* eps = tools->addAction(QStringLiteral("Compute &EPS Rank"));
  eps->setObjectName(QStringLiteral("computeEPSRankMnuItem"));
  connect(eps, &QAction::triggered, this, [this] {
    RunLong(
        [this](platform::Progress& progress) { runs::ComputeEPSRankCommand(*session_, progress); });
  });

  QAction* rs = tools->addAction(QStringLiteral("Compute RS &Rank"));
  rs->setObjectName(QStringLiteral("computeRSRankMnuItem"));
  connect(rs, &QAction::triggered, this, [this] {
    // Files that do not load are passed over, as the command has always done.
    RunLong(
        [this](platform::Progress& progress) { runs::ComputeRSRankCommand(*session_, progress); });
  });

  QAction* check = tools->addAction(QStringLiteral("Check &Price Files"));
  check->setObjectName(QStringLiteral("checkPriceFilesMnuItem"));
  connect(check, &QAction::triggered, this, [this] {
    std::string report;
    const bool done = RunLong([&](platform::Progress& progress) {
      const std::string& folder = session_->config.StockFilePath;
      report = data::CheckReportText(data::CheckPriceFiles(folder, data::FolderFilesToCheck(folder),
                                                           false, progress,
                                                           runs::ListJobs(session_->config)));
    });
    if (!done) return;
    auto* window = new TextWindow(this, QStringLiteral("checkPriceFiles"),
                                  QStringLiteral("Check Price Files"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->ShowLog(report);
  });
}

}  // namespace halvard::gui
