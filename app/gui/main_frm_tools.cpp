// The Tools menu's commands over the price files of the stock folder: the fundamentals and the
// check of the files, each a long run with the progress window, as the command line runs them.

#include <QAction>
#include <QMenu>

#include "halvard/data/price_check.h"
#include "halvard/fundamentals/service_fetch.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/settings/services.h"
#include "main_frm.h"
#include "text_window.h"

namespace halvard::gui {

void MainFrm::AddTools(QMenu* tools) {
  QAction* company = tools->addAction(QStringLiteral("Download &Company Data"));
  company->setObjectName(QStringLiteral("downloadCompanyDataMnuItem"));
  connect(company, &QAction::triggered, this, [this] {
    runs::Session& s = *session_;
    RunLong([&](platform::Progress& progress) {
      const settings::ServiceSettings services = settings::ReadServiceSettings(s.store());
      const auto http = fundamentals::MakeCompanyDataClient(services);
      runs::DownloadCompanyData(s, {http.get(), services.quotesHost, services.profileHost},
                                progress);
    });
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
      report = data::CheckReportText(
          data::CheckPriceFiles(folder, data::FolderFilesToCheck(folder), false, progress));
    });
    if (!done) return;
    auto* window = new TextWindow(this, QStringLiteral("checkPriceFiles"),
                                  QStringLiteral("Check Price Files"));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->ShowLog(report);
  });
}

}  // namespace halvard::gui
