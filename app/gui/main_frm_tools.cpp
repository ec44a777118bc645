// The Tools menu's fundamentals commands: each a long run over the price files of the stock
// folder with the progress window, as the command line runs them.

#include <QAction>
#include <QMenu>

#include "halvard/fundamentals/service_fetch.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/settings/services.h"
#include "main_frm.h"

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
}

}  // namespace halvard::gui
