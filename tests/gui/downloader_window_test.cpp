// The download window against a server on this machine: the selection check, the answers and
// the event log of a list download, and the scheduled download that the main window's timer
// starts once a day.

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDateEdit>
#include <QElapsedTimer>
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
#include "progress_window.h"

namespace halvard::gui::testing {
namespace {

std::string Genuine() {
  return test::GenuineAnswer("table-goog-2011.csv");
}

// A workspace whose price downloads go to the local server, with no pause between requests; the
// server answers every symbol with a genuine answer unless a test tells it otherwise.
struct Served {
  explicit Served(const QString& moreSettings = {}) {
    ws.writeSettings(QStringLiteral("[Services]\nProvider=table\nTable Host=%1\nPause=0\n%2")
                         .arg(QString::fromStdString(server.base()), moreSettings));
    server.Answer("/table.csv", {test::Reply(200, Genuine())});
  }
  std::unique_ptr<MainFrm> open() { return ws.open(dialogs); }
  QStringList targets() const {
    QStringList all;
    for (const std::string& t : server.targets()) all << QString::fromStdString(t);
    return all;
  }
  test::LocalServer server;
  Workspace ws;
  FakeDialogs dialogs;
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

// Presses the progress window's Cancel once ready() turns true, asked from the event loop
// every few milliseconds while a download runs; cancelledAt starts at the press.
void CancelWhen(MainFrm& w, std::function<bool()> ready, QElapsedTimer& cancelledAt) {
  auto* poll = new QTimer(&w);
  QObject::connect(poll, &QTimer::timeout, poll,
                   [&w, ready = std::move(ready), &cancelledAt, poll] {
                     if (!w.progressWindow().isVisible() || !ready()) return;
                     w.progressWindow().findChild<QPushButton*>()->click();
                     cancelledAt.start();
                     poll->deleteLater();
                   });
  poll->start(10);
}

// The service would keep the answer (or its wait) for far longer; a cancel that works ends the
// run within about a second.
constexpr qint64 kCancelledRunEndsWithinMs = 5000;

}  // namespace

class DownloaderWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void withNoListChosenNothingIsFetched() {
    Served s;
    auto w = s.open();
    Trigger(*w, "downloaderMnu");
    DownloaderWindow& d = w->OpenDownloader();
    QVERIFY(d.isVisible());
    QCOMPARE(d.windowTitle(), QStringLiteral("Downloader"));
    Click(d, "downloadBtn");
    QCOMPARE(s.dialogs.messages.size(), size_t{1});
    QCOMPARE(s.dialogs.messages[0].title, QStringLiteral("Halvard 600"));
    QCOMPARE(s.dialogs.messages[0].text, QStringLiteral("Please select an inc list first"));
    QCOMPARE(s.dialogs.messages[0].icon, Dialogs::Icon::kCritical);
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
    auto w = s.open();
    DownloaderWindow& d = w->OpenDownloader();
    Choose(d, QStringLiteral("three.inc"));
    QString statusWhileRunning;
    QTimer::singleShot(0, &d, [&] { statusWhileRunning = d.statusText(); });
    Click(d, "downloadBtn");
    QCOMPARE(statusWhileRunning, QStringLiteral("Downloading WatchList three.inc"));
    QCOMPARE(d.statusText(), QStringLiteral("Ready"));
    QCOMPARE(s.targets().size(), 3);
    QCOMPARE(s.dialogs.messages.size(), size_t{1});
    QCOMPARE(s.dialogs.messages[0].text,
             QStringLiteral("Error downloading inc list - Failed to download BAD\n"));
    QCOMPARE(s.dialogs.messages[0].icon, Dialogs::Icon::kCritical);
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
    s.ws.writeList(QStringLiteral("two.inc"), QStringLiteral("AMD\r\nNEWSYM\r\n"));
    s.ws.writeList(QStringLiteral("z.inc"), QStringLiteral("AMD\r\n"));
    auto w = s.open();
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
    Click(d, "downloadBtn");
    const QStringList targets = s.targets();
    QCOMPARE(targets.size(), 1);
    QVERIFY(targets[0].endsWith(QStringLiteral("&s=NEWSYM")));
    QVERIFY2(targets[0].contains(DateKeys(today.addMonths(-1), 'a', 'b', 'c')),
             qPrintable(targets[0]));
    QVERIFY(targets[0].contains(DateKeys(today, 'd', 'e', 'f')));
    QCOMPARE(s.dialogs.messages.size(), size_t{2});
    for (const auto& m : s.dialogs.messages) {
      QCOMPARE(m.text, QStringLiteral("Inc List Successfully download"));
    }
    QVERIFY(LogEntries(s.ws).contains("Information Done Downloading WatchList : two.inc"));
    QVERIFY(LogEntries(s.ws).contains("Information Done Downloading WatchList : z.inc"));
  }

  // A service slow to answer holds the request, not the window: the window goes on answering
  // (the poll that presses Cancel runs meanwhile) and Cancel stops the request. The old price
  // file stays byte for byte, no answer is shown and the list is not closed in the event log.
  void cancelStopsARequestTheServiceHolds() {
    Served s;
    s.server.Hold();
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("AMD\r\nGOOG\r\n"));
    const QByteArray before = FileBytes(s.ws.stocks() + "/AMD.txt");
    QVERIFY(!before.isEmpty());
    auto w = s.open();
    DownloaderWindow& d = w->OpenDownloader();
    Choose(d, QStringLiteral("one.inc"));
    QElapsedTimer cancelledAt;
    QString statusWhileHeld;
    CancelWhen(
        *w,
        [&] {
          statusWhileHeld = d.statusText();
          return s.server.targets().size() == 1;
        },
        cancelledAt);
    Click(d, "downloadBtn");
    QVERIFY(cancelledAt.isValid());
    QVERIFY2(cancelledAt.elapsed() < kCancelledRunEndsWithinMs,
             qPrintable(QString::number(cancelledAt.elapsed())));
    QCOMPARE(statusWhileHeld, QStringLiteral("Downloading WatchList one.inc"));
    QCOMPARE(s.targets().size(), 1);  // GOOG was never asked for
    QCOMPARE(FileBytes(s.ws.stocks() + "/AMD.txt"), before);
    QVERIFY(s.dialogs.messages.empty());
    QVERIFY(!w->progressWindow().isVisible());
    QCOMPARE(d.statusText(), QStringLiteral("Ready"));
    // Opened, and, stopped, neither closed nor given a failed symbol.
    QCOMPARE(LogEntries(s.ws),
             QStringList{QStringLiteral("Information Downloading WatchList : one.inc")});
  }

  // A busy service asks for a wait before the next try; Cancel ends the wait, and no second
  // request is made.
  void cancelStopsARetryWait() {
    Served s;
    s.server.Answer("/table.csv", {test::Reply(503, "busy", "text/plain", {{"Retry-After", "30"}}),
                                   test::Reply(200, Genuine())});
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("AMD\r\n"));
    const QByteArray before = FileBytes(s.ws.stocks() + "/AMD.txt");
    auto w = s.open();
    DownloaderWindow& d = w->OpenDownloader();
    Choose(d, QStringLiteral("one.inc"));
    QElapsedTimer cancelledAt;
    CancelWhen(
        *w,
        [&] {
          const QStringList log = LogEntries(s.ws);
          return !log.filter(QStringLiteral("Information Retrying ")).isEmpty();
        },
        cancelledAt);
    Click(d, "downloadBtn");
    QVERIFY(cancelledAt.isValid());
    QVERIFY2(cancelledAt.elapsed() < kCancelledRunEndsWithinMs,
             qPrintable(QString::number(cancelledAt.elapsed())));
    QCOMPARE(s.targets().size(), 1);
    QCOMPARE(FileBytes(s.ws.stocks() + "/AMD.txt"), before);
    QVERIFY(s.dialogs.messages.empty());
    // The list was opened in the event log and, cancelled, not closed; nothing failed.
    QCOMPARE(LogEntries(s.ws).filter(QStringLiteral("WatchList : one.inc")),
             QStringList{QStringLiteral("Information Downloading WatchList : one.inc")});
    QVERIFY(LogEntries(s.ws).filter(QStringLiteral("Error ")).isEmpty());
  }

  // An index file the loader refuses does not keep the Downloader from fetching it again.
  void aBrokenIndexCanBeDownloadedAgain() {
    Served s;
    s.ws.writePrices(QStringLiteral("^IXIC"),
                     "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,2,0.5,x,100\r\n");
    s.ws.writeList(QStringLiteral("index.inc"), QStringLiteral("^IXIC\r\n"));
    auto w = s.open();
    QVERIFY(!s.dialogs.messages.empty());
    QVERIFY2(s.dialogs.messages[0].text.endsWith(
                 QStringLiteral("line 2: the close \"x\" is not a number")),
             qPrintable(s.dialogs.messages[0].text));
    s.dialogs.messages.clear();
    DownloaderWindow& d = w->OpenDownloader();
    Choose(d, QStringLiteral("index.inc"));
    Click(d, "downloadBtn");
    QCOMPARE(s.dialogs.messages.size(), size_t{1});
    QCOMPARE(s.dialogs.messages[0].text, QStringLiteral("Inc List Successfully download"));
    QVERIFY(s.targets().at(0).endsWith(QStringLiteral("&s=^IXIC")));
    QVERIFY(FileBytes(s.ws.stocks() + "/^IXIC.txt").startsWith("Date,Open,High,Low,Close,Volume"));
  }

  // The first tick after the set time downloads the lists chosen in the window (showing it
  // again) and stores the day; a second tick that day does nothing.
  void theTimerDownloadsTheChosenListsOnceADay() {
    Served s(QStringLiteral("[Download]\nEnabled=True\nTime=12:00:00 AM\nDate=1/1/00\n"));
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("GOOG\r\n"));
    auto w = s.open();
    DownloaderWindow& d = w->OpenDownloader();
    auto* label = d.findChild<QLabel*>(QStringLiteral("downloadDate"));
    QCOMPARE(label->text(), QStringLiteral(" Data last downloaded on : \nUnknown"));
    QVERIFY(d.findChild<QCheckBox*>(QStringLiteral("autoDownloadEnabled"))->isChecked());
    Choose(d, QStringLiteral("one.inc"));
    d.close();

    // The run goes on beside the window's event loop: its status is read while the service
    // holds the request.
    QString statusWhileRunning;
    s.server.Hold();
    QTimer poll;
    connect(&poll, &QTimer::timeout, &poll, [&] {
      if (s.server.targets().empty()) return;
      QCoreApplication::sendPostedEvents();  // the step that named the list
      statusWhileRunning = d.statusText();
      s.server.Release();
      poll.stop();
    });
    poll.start(10);
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
    QVERIFY(s.dialogs.messages.empty());

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
    s.ws.writeList(QStringLiteral("one.inc"), QStringLiteral("GOOG\r\n"));
    const QString today = QDate::currentDate().toString(QStringLiteral("M/d/yyyy"));
    const double noon = platform::Today() + 0.5;
    {
      auto w = s.open();
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
    auto w = s.open();
    QVERIFY(w->downloadTimer().Tick(noon));
    QCOMPARE(s.targets().size(), 1);
    QVERIFY(s.ws.settingsText().contains("Date=" + today));
    auto* lists = w->OpenDownloader().findChild<QListWidget*>(QStringLiteral("incList"));
    QCOMPARE(lists->selectedItems().size(), 1);
    QCOMPARE(lists->selectedItems().at(0)->text(), QStringLiteral("one.inc"));
    QVERIFY(s.dialogs.messages.empty());
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::DownloaderWindowTest)
#include "downloader_window_test.moc"
