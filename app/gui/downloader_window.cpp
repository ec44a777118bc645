#include "downloader_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <cmath>
#include <optional>

#include "dialogs.h"
#include "halvard/data/download_schedule.h"
#include "halvard/data/watch_list.h"
#include "halvard/platform/clock.h"
#include "halvard/runs/auto_download.h"
#include "halvard/runs/price_downloads.h"
#include "main_frm.h"
#include "named.h"
#include "progress_relay.h"
#include "progress_window.h"

namespace halvard::gui {
namespace {

// The program's dates count days from 12/30/1899, the time of day being the fraction.
const QDate kDayZero(1899, 12, 30);
constexpr double kMillisecondsPerDay = 86400.0 * 1000;

double Serial(const QDate& date) {
  return static_cast<double>(kDayZero.daysTo(date));
}

QDate DateOf(double serial) {
  return kDayZero.addDays(static_cast<qint64>(std::floor(serial)));
}

QTime TimeOf(double serial) {
  const double fraction = serial - std::floor(serial);
  // Whole seconds: a time read from the settings text has rounding noise below that.
  const long seconds = std::lround(fraction * 86400) % 86400;
  return QTime::fromMSecsSinceStartOfDay(static_cast<int>(seconds * 1000));
}

double Fraction(const QTime& time) {
  return time.msecsSinceStartOfDay() / kMillisecondsPerDay;
}

// The drop-down's entries counted from 1: a year, six, three and one month; anything else a
// year.
int PeriodMonths(int position) {
  constexpr int kMonths[] = {12, 6, 3, 1};
  return position >= 1 && position <= 4 ? kMonths[position - 1] : 12;
}

// What a download takes from the main window, read on the window's thread before the run.
struct DownloadSetup {
  explicit DownloadSetup(MainFrm& main)
      : services(settings::ReadServiceSettings(main.session().store())),
        stocks(main.config().StockFilePath),
        log(main.eventLog()) {}
  settings::ServiceSettings services;
  std::string stocks;
  platform::EventLog& log;
};

// Nothing, after an error box, when the [Services] section holds a value that does not convert.
std::optional<DownloadSetup> ReadSetup(MainFrm& main) {
  std::optional<DownloadSetup> setup;
  main.Guarded([&] { setup.emplace(main); });
  return setup;
}

QString Shown(const std::string& text) {
  return QString::fromStdString(text).remove(QLatin1Char('\r'));
}

}  // namespace

DownloaderWindow::DownloaderWindow(MainFrm& main)
    : QDialog(&main),
      main_(main),
      incList_(Named<QListWidget>("incList", this)),
      fromDate_(Named<QDateEdit>("fromDate", this)),
      toDate_(Named<QDateEdit>("toDate", this)),
      autoPickList_(Named<QComboBox>("autoPickList", this)),
      existingFileCheck_(
          Named<QCheckBox>("existingFileCheck", QStringLiteral("Skip Existing Files"), this)),
      autoDownloadEnabled_(Named<QCheckBox>("autoDownloadEnabled",
                                            QStringLiteral("Enable Automatic Downloading"), this)),
      downloadTime_(Named<QTimeEdit>("downloadTime", this)),
      downloadDate_(Named<QLabel>("downloadDate", this)),
      statusBar_(Named<QStatusBar>("StatusBarDownload", this)),
      status_(new QLabel(statusBar_)),
      downloadBtn_(Named<QPushButton>("downloadBtn", QStringLiteral("&Download"), this)) {
  setObjectName(QStringLiteral("downloadFrm"));
  setWindowTitle(QStringLiteral("Downloader"));
  setModal(false);
  BuildWindow();

  const settings::Config& c = main.config();
  const double today = platform::Today();
  toDate_->setDate(DateOf(today));
  autoPickList_->setCurrentIndex(0);
  PickPeriod(0);
  autoDownloadEnabled_->setChecked(c.enableAutoDownload);
  downloadTime_->setTime(TimeOf(c.downloadTime.serial));
  ShowDownloadDate();
  SetStatus(QStringLiteral("Ready"));

  // The schedule's switch and time are settings: the timer sees them at once, and they are
  // stored with the others when the main window closes.
  connect(autoDownloadEnabled_, &QCheckBox::toggled, this,
          [this](bool on) { main_.config().enableAutoDownload = on; });
  connect(downloadTime_, &QTimeEdit::timeChanged, this,
          [this](QTime time) { main_.config().downloadTime.serial = Fraction(time); });
  // The chosen lists serve the scheduled download, in this run and after a restart.
  connect(incList_, &QListWidget::itemSelectionChanged, this, [this] {
    std::vector<std::string> names;
    for (const QString& name : selectedLists()) names.push_back(name.toStdString());
    data::ChooseDownloadLists(main_.config(), names);
  });
  connect(autoPickList_, &QComboBox::activated, this, &DownloaderWindow::PickPeriod);
  connect(downloadBtn_, &QPushButton::clicked, this, &DownloaderWindow::DownloadSelected);
}

void DownloaderWindow::BuildWindow() {
  incList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  for (QDateEdit* date : {fromDate_, toDate_}) {
    date->setDisplayFormat(QStringLiteral("M/d/yyyy"));
    date->setCalendarPopup(true);
  }
  autoPickList_->addItems({QStringLiteral("Last Year"), QStringLiteral("Last Six Months"),
                           QStringLiteral("Last Three Months"), QStringLiteral("Last Month")});
  downloadTime_->setDisplayFormat(QStringLiteral("h:mm AP"));
  statusBar_->setSizeGripEnabled(false);
  statusBar_->addWidget(status_, 1);

  auto* period = new QGroupBox(QStringLiteral("Period"), this);
  auto* dates = new QFormLayout(period);
  dates->addRow(QStringLiteral("From"), fromDate_);
  dates->addRow(QStringLiteral("To"), toDate_);
  dates->addRow(autoPickList_);

  auto* schedule = new QGroupBox(QStringLiteral("Scheduled Download"), this);
  auto* scheduleRows = new QFormLayout(schedule);
  scheduleRows->addRow(autoDownloadEnabled_);
  scheduleRows->addRow(QStringLiteral("Time"), downloadTime_);
  scheduleRows->addRow(downloadDate_);

  auto* side = new QVBoxLayout;
  side->addWidget(period);
  side->addWidget(existingFileCheck_);
  side->addWidget(schedule);
  side->addStretch(1);
  side->addWidget(downloadBtn_, 0, Qt::AlignRight);

  auto* columns = new QHBoxLayout;
  columns->addWidget(incList_, 1);
  columns->addLayout(side);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addWidget(statusBar_);
  resize(480, 360);
}

void DownloaderWindow::RefreshLists() {
  QStringList chosen;
  for (const std::string& name : data::ChosenDownloadLists(main_.config())) {
    chosen << QString::fromStdString(name);
  }
  // Filling the list is no choice of the user's: the chosen lists stay as the settings have them.
  const QSignalBlocker block(incList_);
  QStringList names;
  main_.Guarded([&] {
    for (const std::string& name : data::ListWatchLists(main_.config().IncFilePath)) {
      names << QString::fromStdString(name);
    }
  });
  incList_->clear();
  incList_->addItems(names);
  for (int row = 0; row < incList_->count(); ++row) {
    QListWidgetItem* item = incList_->item(row);
    item->setSelected(chosen.contains(item->text()));
  }
}

QStringList DownloaderWindow::selectedLists() const {
  QStringList names;
  for (int row = 0; row < incList_->count(); ++row) {
    if (incList_->item(row)->isSelected()) names << incList_->item(row)->text();
  }
  return names;
}

void DownloaderWindow::PickPeriod(int index) {
  fromDate_->setDate(DateOf(data::MonthsBefore(platform::Today(), PeriodMonths(index + 1))));
}

void DownloaderWindow::DownloadSelected() {
  if (main_.running()) return;
  const QStringList lists = selectedLists();
  if (lists.isEmpty()) {
    main_.dialogs().message(this, QStringLiteral("Halvard 600"),
                            QStringLiteral("Please select an inc list first"),
                            Dialogs::Icon::kCritical);
    return;
  }
  // Several chosen lists are downloaded one after the other, each with its own answer; a
  // cancel stops the rest.
  for (const QString& name : lists) {
    if (!DownloadOne(name)) break;
  }
}

bool DownloaderWindow::DownloadOne(const QString& name) {
  const std::string list = name.toStdString();
  SetStatus(QStringLiteral("Downloading WatchList ") + name);
  const runs::DownloadRequest request{Serial(fromDate_->date()), Serial(toDate_->date()),
                                      existingFileCheck_->isChecked()};
  const std::optional<DownloadSetup> setup = ReadSetup(main_);
  const auto file = data::WatchListPath(main_.config().IncFilePath, list);
  std::optional<runs::ListDownloadAnswer> answer;
  const bool ran = setup && main_.RunLongAside([&](platform::Progress& progress) {
    runs::PriceDownloads downloads(setup->services, setup->stocks, setup->log, progress);
    answer = downloads.DownloadList(list, file, request);
  });
  if (ran && answer) {
    main_.dialogs().message(this, QStringLiteral("Halvard 600"), Shown(answer->text()),
                            answer->done ? Dialogs::Icon::kNone : Dialogs::Icon::kCritical);
  }
  SetStatus(QStringLiteral("Ready"));
  return ran;
}

void DownloaderWindow::AutoDownload() {
  if (main_.running()) return;
  const std::vector<std::string> lists = data::ChosenDownloadLists(main_.config());
  if (lists.empty()) {
    // Nothing to download, so nothing is recorded as done: the download stays due.
    SetStatus(kNoListChosen);
    return;
  }
  const bool skip = existingFileCheck_->isChecked();
  const std::optional<DownloadSetup> setup = ReadSetup(main_);
  if (!setup) return;
  // The list steps of the download name the list; the symbol steps go to the progress window.
  ProgressRelay relay(main_.progressWindow(), [this](int, int, std::string_view text) {
    if (text.starts_with(runs::kAutoDownloadListText)) {
      SetStatus(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
  });
  downloadBtn_->setEnabled(false);
  // Only the date of the download is written meanwhile; the window's thread reads it after.
  main_.RunLongAside(
      [&](platform::Progress& progress) {
        runs::PriceDownloads downloads(setup->services, setup->stocks, setup->log, progress);
        runs::AutoDownload(lists, skip, platform::Today(), downloads.downloader(), main_.config(),
                           main_.session().store(), progress);
      },
      &relay);
  ShowDownloadDate();
  SetStatus(QStringLiteral("Ready"));
  downloadBtn_->setEnabled(true);
}

void DownloaderWindow::SetStatus(const QString& text) {
  status_->setText(text);
}

QString DownloaderWindow::statusText() const {
  return status_->text();
}

void DownloaderWindow::ShowDownloadDate() {
  downloadDate_->setText(Shown(data::DownloadDateLabel(main_.config().downloadDate)));
}

}  // namespace halvard::gui
