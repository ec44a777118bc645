// The menus of the main window: captions and access keys as users know them, each entry a call
// on the library or a secondary window.

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>

#include "dialogs.h"
#include "halvard/error.h"
#include "halvard/runs/daily_report_files.h"
#include "halvard/runs/fundamentals_commands.h"
#include "halvard/runs/scan_commands.h"
#include "halvard/runs/scans.h"
#include "main_frm.h"
#include "options_dialog.h"
#include "progress_relay.h"
#include "progress_window.h"
#include "text_window.h"

namespace halvard::gui {
namespace {

QAction* AddEntry(QMenu* menu, const char* objectName, const QString& caption) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(objectName));
  return action;
}

// The error that stopped a scan, with the symbols it had passed before it (the command line
// prints the same ahead of its error), in a paragraph so a long list wraps. Its list is
// incomplete, so it is not offered for saving.
std::string WithFoundSoFar(const Error& error) {
  std::string symbols;
  for (const std::string& symbol : runs::PassedBefore(error)) {
    symbols.append(symbols.empty() ? "" : ", ").append(symbol);
  }
  return error.what() + std::string("\n\nNothing was saved. Passed before it: ") +
         (symbols.empty() ? "none" : symbols);
}

// The Scans menu in its order, by the captions of the library's scan table.
struct ScanEntry {
  const char* objectName;
  const char* caption;
};
constexpr ScanEntry kScanEntries[] = {
    {"wk52HighMnu", "52 Week High"},
    {"xHiMnu", "X High"},
    {"uvScanMnu", "Unusual Volume"},
    {"spBoxScanMnu", "Corvanes"},
    {"inboxScanMnu", "In a Box"},
    {"belowStopLossScanmnu", "Below Stop Loss"},
    {"bsScanMnu", "Buy Signal Scan"},
    {"incEPSScanMnuItem", "Increasing EPS Scan"},
    {"incRSScanMnuItem", "Increasing RS Scan"},
    {"topEPSRankScanMnu", "Top EPS Rank Scan"},
    {"topRSRankScanMnuItem", "Top RS Rank Scan"},
};

const runs::ScanCommand* ScanByCaption(std::string_view caption) {
  for (const runs::ScanCommand& c : runs::ScanCommands()) {
    if (c.caption == caption) return &c;
  }
  return nullptr;
}

}  // namespace

void MainFrm::BuildMenus() {
  QMenuBar* bar = menuBar();

  QMenu* file = bar->addMenu(QStringLiteral("&File"));
  connect(AddEntry(file, "exitMnuItem", QStringLiteral("E&xit")), &QAction::triggered, this,
          [this] { EndProgram(false); });

  QMenu* lists = bar->addMenu(QStringLiteral("&Watch Lists"));
  connect(AddEntry(lists, "screenerMnu", QStringLiteral("Sc&reener")), &QAction::triggered, this,
          &MainFrm::OpenScreener);
  connect(AddEntry(lists, "downloaderMnu", QStringLiteral("&Downloader")), &QAction::triggered,
          this, [this] { OpenDownloader(); });
  connect(AddEntry(lists, "boolOpMnu", QStringLiteral("&Boolean Operations")), &QAction::triggered,
          this, &MainFrm::OpenBooleanOperations);
  connect(AddEntry(lists, "editCurrentWatchListMnu", QStringLiteral("&Edit Current")),
          &QAction::triggered, this, &MainFrm::EditCurrent);

  QMenu* scans = bar->addMenu(QStringLiteral("&Scans"));
  for (const ScanEntry& entry : kScanEntries) {
    const runs::ScanCommand* command = ScanByCaption(entry.caption);
    QAction* action = AddEntry(scans, entry.objectName, QString::fromLatin1(entry.caption));
    action->setEnabled(command != nullptr);
    if (command != nullptr) {
      connect(action, &QAction::triggered, this, [this, command] { RunScan(*command); });
    }
  }

  QMenu* trade = bar->addMenu(QStringLiteral("&Trade"));
  connect(AddEntry(trade, "backTestMnu", QStringLiteral("&BackTest WatchList")),
          &QAction::triggered, this, [this] { OpenBatchTest(); });
  connect(AddEntry(trade, "backTestCurrMnu", QStringLiteral("BackTest &Current")),
          &QAction::triggered, this, [this] { BacktestCurrent(false); });
  connect(AddEntry(trade, "todaysReportMnu", QStringLiteral("Today's &Report")),
          &QAction::triggered, this, &MainFrm::ShowTodaysReport);

  QMenu* boxes = bar->addMenu(QStringLiteral("&Boxes"));
  connect(AddEntry(boxes, "jumpToMnuItem", QStringLiteral("&Jump To")), &QAction::triggered, this,
          [this] { KeyCommand(u'j'); });

  QMenu* view = bar->addMenu(QStringLiteral("&View"));
  const std::pair<const char*, const char*> views[] = {
      {"fiveDayViewMnuItem", "&5 Day View"},      {"oneMonthViewMnu", "&One Month View"},
      {"threeMonthViewMnu", "&Three Month View"}, {"sixMonthViewMnu", "&Six Month View"},
      {"oneYearViewMnu", "One &Year View"},
  };
  for (int i = 0; i < 5; ++i) {
    connect(AddEntry(view, views[i].first, QString::fromLatin1(views[i].second)),
            &QAction::triggered, this, [this, i] {
              SetView(i + 1);
              ShowView();
            });
  }

  QMenu* tools = bar->addMenu(QStringLiteral("&Tools"));
  AddTools(tools);
  connect(AddEntry(tools, "optionsMnuItem", QStringLiteral("&Options")), &QAction::triggered, this,
          &MainFrm::OpenOptions);

  QMenu* help = bar->addMenu(QStringLiteral("&Help"));
  AddEntry(help, "aboutMnuItem", QStringLiteral("&About"));
}

void MainFrm::ShowTodaysReport() {
  const std::string& folder = session_->config.ReportFilePath;
  Guarded([&] {
    const auto latest = runs::FindLatestDailyReports(folder);
    if (!latest) {
      dialogs_.message(this, QStringLiteral("Today's Report"),
                       QStringLiteral("There is no daily report in %1 yet.\n\nThe command "
                                      "\"halvard daily --list NAME\" writes one, once an evening.")
                           .arg(QString::fromStdString(folder)),
                       Dialogs::Icon::kInformation);
      return;
    }
    auto* window = new TextWindow(
        this, QStringLiteral("todaysReport"),
        QStringLiteral("Today's Report - %1").arg(QString::fromStdString(latest->day)));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->ShowLog(latest->text);
  });
}

void MainFrm::RunScan(const runs::ScanCommand& command) {
  runs::Session& s = *session_;
  // With "Update Graphs During Scans" on, the chart follows the scan stock by stock: each step
  // shows the stock the scan loaded last.
  ProgressRelay relay(*progress_, [this](int, int, std::string_view) {
    if (session_->config.enableGraphUpdate) ShowLoaded();
  });
  // A cancelled or failed scan offers nothing to save: its list would be incomplete.
  runs::ScanSymbols passed;
  const bool done = RunLong([&](platform::Progress&) {
    try {
      passed = command.run(s, relay);
    } catch (const Error& e) {
      throw Error(WithFoundSoFar(e));
    }
  });
  if (!done) return;
  const QString file = dialogs_.saveWatchList(this, QString::fromStdString(s.config.IncFilePath),
                                              QString::fromStdString(command.listName(s.config)));
  if (!file.isEmpty()) Guarded([&] { runs::SaveResultList(passed, file.toStdString()); });
  RefreshIncList();
}

void MainFrm::OpenOptions() {
  OptionsDialog dialog(
      session_->config, [this] { session_->WriteSettings(); }, dialogs_, this);
  Guarded([&] {
    const settings::MRegistry& store = session_->store();
    dialog.AddServicesPage(
        settings::ReadServiceSettings(store),
        [this, &store](const std::vector<settings::ServiceText>& changed) {
          std::vector<settings::StoredValue> values;
          for (const auto& c : changed) {
            values.push_back({std::string(settings::kServicesSection), c.name, c.text});
          }
          store.SaveStrings(settings::kAppName, values);
          if (const std::string warning = settings::ProtectServiceKeys(store); !warning.empty()) {
            eventLog_.Write(platform::EventType::kInformation, warning);
          }
        });
  });
  dialog.exec();
}

}  // namespace halvard::gui
