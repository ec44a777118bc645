// The download window against a server on this machine: the selection check, the answers and
// the event log of a list download, and the scheduled download that the main window's timer
// starts once a day.

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "download_timer.h"
#include "downloader_window.h"
#include "gui_test_support.h"
#include "halvard/platform/clock.h"
#include "local_server.h"

namespace halvard::gui::testing {
namespace {

// A workspace whose price downloads go to the local server, with no pause between requests.
struct Served {
  explicit Served(const QString& moreSettings = {}) {
    ws.writeSettings(QStringLiteral("[Services]\nProvider=table\nTable Host=%1\nPause=0\n%2")
                         .arg(QString::fromStdString(server.base()), moreSettings));
  }
  QStringList targets() const {
    QStringList all;
    for (const std::string& t : server.targets()) all << QString::fromStdString(t);
    return all;
  }
  test::LocalServer server;
  Workspace ws;
};

// The event log's entries as "Information text" or "Error text", without their time.
QStringList LogEntries(const Workspace& ws) {
  QFile file(QString::fromStdString(ws.start().eventLogFile.string()));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList entries;
  for (const QString& line : QString::fromUtf8(file.readAll()).split("\r\n", Qt::SkipEmptyParts)) {
    entries << line.section(u'\t', 1).replace(u'\t', u' ');
  }
  return entries;
}

void Choose(DownloaderWindow& d, const QString& list) {
  for (QListWidgetItem* item :
       d.findChild<QListWidget*>(QStringLiteral("incList"))->findItems(list, Qt::MatchExactly)) {
    item->setSelected(true);
  }
}

void ClickDownload(DownloaderWindow& d) {
  d.findChild<QPushButton*>(QStringLiteral("downloadBtn"))->click();
}

// The request keys of a date: a=M-1&b=D&c=YYYY (or d, e, f for the end).
QString DateKeys(const QDate& date, char month, char day, char year) {
  return QStringLiteral("%1=%2&%3=%4&%5=%6")
      .arg(QChar(month))
      .arg(date.month() - 1)
      .arg(QChar(day))
      .arg(date.day())
      .arg(QChar(year))
      .arg(date.year());
}

std::string Genuine() {
  return test::GenuineAnswer("table-goog-2011.csv");
}

}  // namespace

class DownloaderWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void withNoListChosenNothingIsFetched() {
    Served s;
    FakeDialogs dialogs;
    auto w = s.ws.open(dialogs);
    w->findChild<QAction*>(QStringLiteral("downloaderMnu"))->trigger();
    DownloaderWindow& d = w->OpenDownloader();
    QVERIFY(d.isVisible());
    QCOMPARE(d.windowTitle(), QStringLiteral("Downloader"));
    ClickDownload(d);
    QCOMPARE(dialogs.messages.size(), size_t{1});
    QCOMPARE(dialogs.messages[0].title, QStringLiteral("Halvard 600"));
    QCOMPARE(dialogs.messages[0].text, QStringLiteral("Please select an inc list first"));
    QCOMPARE(dialogs.messages[0].icon, Dialogs::Icon::kCritical);
    QVERIFY(s.targets().isEmpty());
    QVERIFY(LogEntries(s.ws).isEmpty());
    QCOMPARE(d.statusText(), QStringLiteral("Ready"));
  }

  // A failed symbol turns the list into a failure, and the symbols after it are still fetched.
  void aFailedSymbolFailsTheListButNotTheOthers() {
    Served s;
    s.server.Answer("/table.csv",
                    {test::Reply(200, Genuine()), test::Reply(404, "Not Found", "text/plain"),
                     test::Reply(200, Genuine())});
    s.ws.writeList(QStringLiteral("three.inc"), QStringLiteral("GOOG\r\nBAD\r\nORCL\r\n"));
    FakeDialogs dialogs;
    auto w = s.ws.open(dialogs);
    DownloaderWindow& d = w->OpenDownloader();
    Choose(d, QStringLiteral("three.inc"));
    QString statusWhileRunning;
    QTimer::singleShot(0, &d, [&] { statusWhileRunning = d.statusText(); });
    ClickDownload(d);
    QCOMPARE(statusWhileRunning, QStringLiteral("Downloading WatchList three.inc"));
    QCOMPARE(d.statusText(), QStringLiteral("Ready"));
    QCOMPARE(s.targets().size(), 3);
    QCOMPARE(dialogs.messages.size(), size_t{1});
    QCOMPARE(dialogs.messages[0].text,
             QStringLiteral("Error downloading inc list - Failed to download BAD\n"));
    QCOMPARE(dialogs.messages[0].icon, Dialogs::Icon::kCritical);
    QVERIFY(QFile::exists(s.ws.stocks() + "/GOOG.txt"));
    QVERIFY(QFile::exists(s.ws.stocks() + "/ORCL.txt"));
    QVERIFY(!QFile::exists(s.ws.stocks() + "/BAD.txt"));
    const QStringList log = LogEntries(s.ws);
    const qsizetype started = log.indexOf("Information Downloading WatchList : three.inc");
    const qsizetype failed = log.indexOf("Error Failed to download BAD");
    const qsizetype ended = log.indexOf("Information Error Downloading WatchList : three.inc");
    QVERIFY2(started >= 0 && started < failed && failed < ended, qPrintable(log.join(" | ")));
  }

  // "Skip Existing Files" leaves AMD (a sample price file) alone; the period drop-down sets the
  // first day asked for; two chosen lists are downloaded in turn, each with its answer.
  void skipExistingAndThePeriodReachTheRequest() {
    Served s;
    s.server.Answer("/table.csv", {test::Reply(200, Genuine())});
    s.ws.writeList(QStringLiteral("two.inc"), QStringLiteral("AMD\r\nNEWSYM\r\n"));
    s.ws.writeList(QStringLiteral("z.inc"), QStringLiteral("AMD\r\n"));
    FakeDialogs dialogs;
    auto w = s.ws.open(dialogs);
    DownloaderWindow& d = w->OpenDownloader();
    const QDate today = QDate::currentDate();
    QCOMPARE(d.findChild<QDateEdit*>(QStringLiteral("fromDate"))->date(), today.addYears(-1));
    Choose(d, QStringLiteral("two.inc"));
    Choose(d, QStringLiteral("z.inc"));
    d.findChild<QCheckBox*>(QStringLiteral("existingFileCheck"))->setChecked(true);
    auto* period = d.findChild<QComboBox*>(QStringLiteral("autoPickList"));
    QCOMPARE(period->itemText(3), QStringLiteral("Last Month"));
    period->setCurrentIndex(3);
    emit period->activated(3);
    ClickDownload(d);
    const QStringList targets = s.targets();
    QCOMPARE(targets.size(), 1);
    QVERIFY(targets[0].endsWith(QStringLiteral("&s=NEWSYM")));
    QVERIFY2(targets[0].contains(DateKeys(today.addMonths(-1), 'a', 'b', 'c')),
             qPrintable(targets[0]));
    QVERIFY(targets[0].contains(DateKeys(today, 'd', 'e', 'f')));
    QCOMPARE(dialogs.messages.size(), size_t{2});
    for (const auto& m : dialogs.messages) {
      QCOMPARE(m.text, QStringLiteral("Inc List Successfully download"));
    }
    QVERIFY(LogEntries(s.ws).contains("Information Done Downloading WatchList : two.inc"));
    QVERIFY(LogEntries(s.ws).contains("Information Done Downloading WatchList : z.inc"));
  }

  // The first tick after the set time downloads the lists chosen in the window (showing it
  // again) and stores the day; a second tick that day does nothing.
  void theTimerDownloadsTheChosenListsOnceADay() {
    Served s(QStringLiteral("[Download]\nEnabled=True\nTime=12:00:00 AM\nDate=1/1/00\n"));
    s.server.Answer("/table.csv", {test::Reply(200, Genuine())});
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("GOOG\r\n"));
    FakeDialogs dialogs;
    auto w = s.ws.open(dialogs);
    DownloaderWindow& d = w->OpenDownloader();
    auto* label = d.findChild<QLabel*>(QStringLiteral("downloadDate"));
    QCOMPARE(label->text(), QStringLiteral(" Data last downloaded on : \nUnknown"));
    QVERIFY(d.findChild<QCheckBox*>(QStringLiteral("autoDownloadEnabled"))->isChecked());
    Choose(d, QStringLiteral("one.inc"));
    d.close();

    QString statusWhileRunning;
    QTimer::singleShot(0, &d, [&] { statusWhileRunning = d.statusText(); });
    const double noon = platform::Today() + 0.5;
    QVERIFY(w->downloadTimer().Tick(noon));
    QVERIFY(d.isVisible());
    QCOMPARE(statusWhileRunning, QStringLiteral("Automatically Downloading WatchList one.inc"));
    QCOMPARE(s.targets().size(), 1);
    const QString today = QDate::currentDate().toString(QStringLiteral("M/d/yyyy"));
    QCOMPARE(label->text(), " Data last downloaded on : \n" + today);
    QVERIFY2(s.ws.settingsText().contains("Date=" + today), qPrintable(s.ws.settingsText()));
    QCOMPARE(d.statusText(), QStringLiteral("Ready"));
    QVERIFY(d.findChild<QPushButton*>(QStringLiteral("downloadBtn"))->isEnabled());
    QVERIFY(dialogs.messages.empty());

    QVERIFY(!w->downloadTimer().Tick(noon + 0.1));
    QCOMPARE(s.targets().size(), 1);

    // The window's check box is the setting the timer reads.
    d.findChild<QCheckBox*>(QStringLiteral("autoDownloadEnabled"))->setChecked(false);
    QVERIFY(!w->config().enableAutoDownload);
  }

  // With no list chosen the scheduled download fetches nothing and records nothing, and says so
  // once; the lists chosen are settings, so after a restart the timer downloads them.
  void theChosenListsOutliveARestart() {
    Served s(QStringLiteral("[Download]\nEnabled=True\nTime=12:00:00 AM\nDate=1/1/00\n"));
    s.server.Answer("/table.csv", {test::Reply(200, Genuine())});
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("GOOG\r\n"));
    const QString today = QDate::currentDate().toString(QStringLiteral("M/d/yyyy"));
    const double noon = platform::Today() + 0.5;
    FakeDialogs dialogs;
    {
      auto w = s.ws.open(dialogs);
      QVERIFY(w->downloadTimer().Tick(noon));
      DownloaderWindow& d = w->OpenDownloader();
      QCOMPARE(d.statusText(), DownloaderWindow::kNoListChosen);
      QCOMPARE(s.targets().size(), 0);
      QVERIFY(!s.ws.settingsText().contains("Date=" + today));
      d.close();
      QVERIFY(w->downloadTimer().Tick(noon + 0.01));  // still due, but asked about once
      QVERIFY(!d.isVisible());
      w->OpenDownloader();
      Choose(d, QStringLiteral("one.inc"));
      QCOMPARE(w->config().downloadLists, std::string("one.inc"));
      w->close();
    }
    QVERIFY2(s.ws.settingsText().contains("Lists=one.inc"), qPrintable(s.ws.settingsText()));
    auto w = s.ws.open(dialogs);
    QVERIFY(w->downloadTimer().Tick(noon));
    QCOMPARE(s.targets().size(), 1);
    QVERIFY(s.ws.settingsText().contains("Date=" + today));
    auto* lists = w->OpenDownloader().findChild<QListWidget*>(QStringLiteral("incList"));
    QCOMPARE(lists->selectedItems().size(), 1);
    QCOMPARE(lists->selectedItems().at(0)->text(), QStringLiteral("one.inc"));
    QVERIFY(dialogs.messages.empty());
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::DownloaderWindowTest)
#include "downloader_window_test.moc"
