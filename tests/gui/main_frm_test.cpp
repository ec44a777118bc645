// The main window driven as a user drives it: start-up, list selection, the keys and the menus,
// on a private copy of the bundled samples.

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSet>
#include <QTest>
#include <QTimer>

#include "backtest_window.h"
#include "gui_test_support.h"
#include "halvard/settings/config.h"
#include "progress_window.h"
#include "screenshot.h"
#include "text_window.h"

namespace halvard::gui::testing {
namespace {

QStringList Settings(MainFrm& w) {
  return SettingLines(w.config());
}

bool LabelShown(MainFrm& w) {
  return !w.findChild<QLabel*>(QStringLiteral("notDownloadedError"))->isHidden();
}

QString StatusPanel(MainFrm& w, int panel) {
  return w.findChild<QLabel*>(QStringLiteral("statusPanel%1").arg(panel))->text();
}

}  // namespace

class MainFrmTest : public QObject {
  Q_OBJECT

 private slots:
  void startUpForcesTheRSSettingsWhateverWasStored() {
    Opened o({}, "[View]\nShowRS=False\n[Batch]\nRS Days=5\nRS Check=False\n");
    QVERIFY(o.w->config().showRS);
    QVERIFY(o.w->config().rsCheckEnabled);
    QCOMPARE(o.w->config().rsDayCurr, 10);
    QVERIFY(o.dialogs.messages.empty());
    o.w->close();  // closing writes the forced values back
    QVERIFY(o.ws.settingsText().contains(QStringLiteral("RS Days=10")));
    QVERIFY(o.ws.settingsText().contains(QStringLiteral("ShowRS=True")));
  }

  void aMissingIndexFileSaysSoAndTurnsTheRSLineOff() {
    Workspace ws;
    QVERIFY(QFile::remove(ws.stocks() + "/^IXIC.txt"));
    FakeDialogs dialogs;
    auto w = ws.open(dialogs);
    QCOMPARE(dialogs.messages.size(), size_t{1});
    QCOMPARE(dialogs.messages[0].title, QStringLiteral("Error"));
    QCOMPARE(dialogs.messages[0].text,
             QStringLiteral("Unable to read ^IXIC.txt, Relative Strength Not Available"));
    QVERIFY(!w->config().showRS);
  }

  void anEmptyListFolderSelectsNothing() {
    Opened o(false);
    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    QCOMPARE(lists->count(), 0);
    QCOMPARE(lists->currentIndex(), -1);
    QCOMPARE(o.w->findChild<QListWidget*>(QStringLiteral("HotList"))->count(), 0);
    QVERIFY(!o.w->session().chartReady);
    QVERIFY(LabelShown(*o.w));
  }

  void selectingAListShowsItsFirstSymbol() {
    Opened o({{"zz.inc", "NOSUCH\r\nAMD\r\n"}});
    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    auto* hot = o.w->findChild<QListWidget*>(QStringLiteral("HotList"));
    QCOMPARE(lists->currentText(), QStringLiteral("sample.inc"));
    QCOMPARE(hot->count(), static_cast<int>(o.w->session().symbols.size()));
    QCOMPARE(hot->currentRow(), 0);
    QVERIFY(o.w->session().chartReady);
    QVERIFY(!LabelShown(*o.w));
    QVERIFY(StatusPanel(*o.w, 2).startsWith(QStringLiteral("Last Day - ")));
    QVERIFY(StatusPanel(*o.w, 1).endsWith(hot->item(0)->text()));

    // Row 0 has no price file: the list still shows, with the label over a cleared chart and no
    // numbers of the symbol shown before.
    lists->setCurrentIndex(lists->findText(QStringLiteral("zz.inc")));
    QCOMPARE(hot->count(), 2);
    QCOMPARE(hot->item(0)->text(), QStringLiteral("NOSUCH"));
    QVERIFY(LabelShown(*o.w));
    QCOMPARE(WindowTexts(*o.w),
             (QStringList{"Six Month View - NOSUCH", "", "Data Not Downloaded Yet"}));
    // Clicking a symbol loads it; the information page falls back to its defaults.
    hot->setCurrentRow(1);
    QVERIFY(!LabelShown(*o.w));
    QVERIFY(StatusPanel(*o.w, 1).endsWith(QStringLiteral("AMD")));
    QVERIFY(StatusPanel(*o.w, 2).startsWith(QStringLiteral("Last Day - ")));
    QCOMPARE(o.w->findChild<QLabel*>(QStringLiteral("companyName"))->text(),
             QStringLiteral("Company"));
    hot->setCurrentRow(0);  // a click on a symbol without a price file
    QCOMPARE(WindowTexts(*o.w),
             (QStringList{"Six Month View - NOSUCH", "", "Data Not Downloaded Yet"}));
  }

  // A failed "j" leaves nothing to draw: a view key afterwards shows the label again, not the
  // bars of the symbol before under the new name.
  void aViewKeyAfterAFailedJumpShowsTheLabel() {
    Opened o;
    o.dialogs.answers = {QString("ZZZZ")};
    o.w->KeyCommand(u'j');
    o.w->KeyCommand(u'y');
    QCOMPARE(WindowTexts(*o.w),
             (QStringList{"One Year View - ZZZZ", "", "Data Not Downloaded Yet"}));
    o.w->KeyCommand(u'.');  // the next symbol loads and shows
    QVERIFY(!LabelShown(*o.w));
    QVERIFY(StatusPanel(*o.w, 2).startsWith(QStringLiteral("Last Day - ")));
  }

  // Choosing the list already shown loads it again: edited on disk, or after "f" loaded another.
  void reChoosingTheShownListReloadsIt() {
    Opened o({{"a.inc", "AMD\r\nAAL\r\n"}, {"b.inc", "AVY\r\n"}});
    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    auto* hot = o.w->findChild<QListWidget*>(QStringLiteral("HotList"));
    QCOMPARE(lists->currentText(), QStringLiteral("a.inc"));
    o.ws.writeList(QStringLiteral("a.inc"), QStringLiteral("AAL\r\n"));
    emit lists->activated(lists->currentIndex());
    QCOMPARE(hot->count(), 1);
    QVERIFY(StatusPanel(*o.w, 1).endsWith(QStringLiteral("AAL")));
    o.dialogs.answers = {QString("b")};
    o.w->KeyCommand(u'f');
    QCOMPARE(hot->item(0)->text(), QStringLiteral("AVY"));
    emit lists->activated(lists->currentIndex());
    QCOMPARE(hot->item(0)->text(), QStringLiteral("AAL"));
    QCOMPARE(o.w->session().listName, std::string("a.inc"));
  }

  // "Edit Current": $VISUAL, then $EDITOR, then the desktop's program; else a message says why.
  void editCurrentOpensTheListInTheUsersEditor() {
    Opened o;
    QAction* edit = o.w->findChild<QAction*>(QStringLiteral("editCurrentWatchListMnu"));
    const QString list = o.ws.lists() + "/sample.inc";
    const QString seen = o.ws.lists() + "/../edited.txt";
    // An editor that writes down the file it was given.
    const QString editor = o.ws.lists() + "/../editor.sh";
    WriteBytes(editor, QStringLiteral("#!/bin/sh\nprintf %s \"$2\" > '%1'\n").arg(seen).toUtf8());
    QFile(editor).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray visual = qgetenv("VISUAL"), editorVar = qgetenv("EDITOR");
    qputenv("VISUAL", (QStringLiteral("/nonexistent/editor")).toUtf8());
    qputenv("EDITOR", (editor + " --wait").toUtf8());
    edit->trigger();
    QTRY_COMPARE(FileText(seen), list);
    QVERIFY(o.dialogs.messages.empty());
    QVERIFY(o.dialogs.desktopOpened.empty());

    qunsetenv("VISUAL");
    qunsetenv("EDITOR");
    o.dialogs.desktopTakes = true;
    edit->trigger();
    QCOMPARE(o.dialogs.desktopOpened, std::vector<QString>{list});
    QVERIFY(o.dialogs.messages.empty());
    o.dialogs.desktopTakes = false;
    edit->trigger();
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QVERIFY(o.dialogs.messages[0].text.contains(list));
    QVERIFY(o.dialogs.messages[0].text.contains(QStringLiteral("neither $VISUAL nor $EDITOR")));
    qputenv("VISUAL", visual);
    qputenv("EDITOR", editorVar);
  }

  // Folders given on the command line are for the run; a stored value that did not convert is
  // kept as the user wrote it, and every other stored value is read and kept.
  void closingWritesBackOnlyWhatTheUserChanged() {
    Opened o({},
             "[Paths]\nStock File Path=/home/me/prices\n[View]\nCurrent=abc\n"
             "[Batch]\nStop Loss Limit=0.5\nBuyMode=2\n[Scans]\n52 Week Period=30\n");
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QVERIFY(o.dialogs.messages[0].text.contains(QStringLiteral("\"abc\" stays in the file")));
    QCOMPARE(o.w->config().stopLossLimit, 0.5);
    QCOMPARE(o.w->config().buyMode, 2);
    QCOMPARE(o.w->config().period52week, 30);
    QCOMPARE(QString::fromStdString(o.w->config().StockFilePath), o.ws.stocks());
    o.w->close();
    const QString text = o.ws.settingsText();
    for (const char* line : {"Stock File Path=/home/me/prices\r\n", "Current=abc\r\n",
                             "Stop Loss Limit=0.5\r\n", "BuyMode=2\r\n", "52 Week Period=30\r\n"}) {
      QVERIFY2(text.contains(QString::fromLatin1(line)), qPrintable(text));
    }
    QVERIFY2(!text.contains(o.ws.lists()), qPrintable(text));
  }

  // With "Update Graphs During Scans" on, the chart follows the scan stock by stock.
  void scansRedrawEachStockWhenAsked() {
    for (const bool follow : {true, false}) {
      Opened o;
      o.w->config().enableGraphUpdate = follow;
      QSet<QString> titles;
      QTimer watch;
      connect(&watch, &QTimer::timeout, o.w.get(), [&] { titles << StatusPanel(*o.w, 1); });
      watch.start(0);
      Trigger(*o.w, "inboxScanMnu");
      watch.stop();
      if (follow) {
        QVERIFY2(titles.size() > 20, qPrintable(QStringList(titles.values()).join(", ")));
      } else {
        QCOMPARE(titles.size(), 1);
      }
    }
  }

  void upperCaseLettersOnlyClearTheChart() {
    Opened o;
    const auto before = Settings(*o.w);
    for (const QChar key : QStringLiteral("YRQOEUVLFJTGMA5")) {
      if (key == u'5') continue;  // the one lower-case control: it redraws
      o.w->KeyCommand(key);
      QVERIFY2(!o.w->session().chartReady, qPrintable(QString(key)));
      QVERIFY(LabelShown(*o.w));
    }
    QVERIFY(o.dialogs.prompts.empty());
    QVERIFY(o.dialogs.messages.empty());
    QVERIFY(Settings(*o.w) == before);
    QVERIFY(!QFile::exists(o.ws.settingsFile()));  // "Q" is not "q": nothing was written
    o.w->KeyCommand(u'5');
    QVERIFY(o.w->session().chartReady);
    QVERIFY(!LabelShown(*o.w));
  }

  // Typed keys reach the commands whichever list has focus, and the list does not also take
  // them as a search for a symbol.
  void keysTypedIntoTheListsAreCommands() {
    Opened o;
    o.w->show();
    QVERIFY(QTest::qWaitForWindowActive(o.w.get()));
    auto* hot = o.w->findChild<QListWidget*>(QStringLiteral("HotList"));
    hot->setFocus();
    QTest::keyClicks(hot, QStringLiteral("Y"));
    QCOMPARE(o.w->config().currentView, 4);
    QVERIFY(LabelShown(*o.w));
    QTest::keyClicks(hot, QStringLiteral("y."));
    QCOMPARE(o.w->config().currentView, 5);
    QCOMPARE(o.w->session().hotListCursor, 1);
    QCOMPARE(hot->currentRow(), 0);
    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    lists->setFocus();
    QTest::keyClicks(lists, QStringLiteral("5"));
    QCOMPARE(o.w->config().currentView, 1);
    // Arrow keys stay the list's own: the next row is selected and shown.
    hot->setFocus();
    QTest::keyClick(hot, Qt::Key_Down);
    QCOMPARE(hot->currentRow(), 1);
    QVERIFY(StatusPanel(*o.w, 1).endsWith(hot->item(1)->text()));
  }

  void viewKeysSetTheViewAndRedraw_data() {
    QTest::addColumn<QChar>("key");
    QTest::addColumn<int>("view");
    QTest::addColumn<QString>("title");
    QTest::newRow("5") << QChar(u'5') << 1 << QStringLiteral("Five Day View - ");
    QTest::newRow("1") << QChar(u'1') << 2 << QStringLiteral("Thirty Day View - ");
    QTest::newRow("3") << QChar(u'3') << 3 << QStringLiteral("Ninety Day View - ");
    QTest::newRow("6") << QChar(u'6') << 4 << QStringLiteral("Six Month View - ");
    QTest::newRow("y") << QChar(u'y') << 5 << QStringLiteral("One Year View - ");
  }
  void viewKeysSetTheViewAndRedraw() {
    QFETCH(QChar, key);
    QFETCH(int, view);
    QFETCH(QString, title);
    Opened o;
    o.w->KeyCommand(u'o');  // leaves the chart cleared
    QVERIFY(LabelShown(*o.w));
    o.w->KeyCommand(key);
    QCOMPARE(o.w->config().currentView, view);
    QVERIFY(!LabelShown(*o.w));
    QVERIFY(StatusPanel(*o.w, 1).startsWith(title));
  }

  // "v": a fraction as it is, more than 1 as a percentage, 1 and below 0 ignored; text that is
  // no number is refused with a message, a cancelled prompt changes nothing quietly.
  void unusualVolumePrompt_data() {
    QTest::addColumn<QString>("answer");
    QTest::addColumn<double>("stored");
    QTest::addColumn<bool>("refused");
    QTest::newRow("1") << QString("1") << 0.25 << false;
    QTest::newRow("0.5") << QString("0.5") << 0.5 << false;
    QTest::newRow("50") << QString("50") << 0.5 << false;
    QTest::newRow("-3") << QString("-3") << 0.25 << false;
    QTest::newRow("0") << QString("0") << 0.25 << false;
    QTest::newRow("abc") << QString("abc") << 0.25 << true;
    QTest::newRow("empty") << QString("") << 0.25 << true;
    QTest::newRow("cancel") << QString() << 0.25 << false;
  }
  void unusualVolumePrompt() {
    QFETCH(QString, answer);
    QFETCH(double, stored);
    QFETCH(bool, refused);
    Opened o;
    o.dialogs.answers.push_back(answer);
    o.w->KeyCommand(u'v');
    QCOMPARE(o.dialogs.prompts.back(),
             QStringLiteral("Unusual Volume / Enter the unusual volume %age"));
    QCOMPARE(o.w->config().unusualVolumePercentage, stored);
    QCOMPARE(o.dialogs.messages.size(), size_t{refused ? 1u : 0u});
    if (refused) QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Error"));
  }

  // The other numeric prompts: what each stores and what each refuses.
  void numericPrompts_data() {
    QTest::addColumn<QChar>("key");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("setting");  // "Section/Value Name"
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("refused");
    const auto row = [](QChar key, const char* answer, const char* setting, const char* expected,
                        bool refused) {
      QTest::addRow("%c %s", key.toLatin1(), answer)
          << key << QString(answer) << QString(setting) << QString(expected) << refused;
    };
    row(u'u', "3", "Batch/BuyMode", "1", false);
    row(u'u', "2", "Batch/BuyMode", "2", false);
    row(u'u', "x", "Batch/BuyMode", "1", true);
    row(u'r', "15", "Batch/RS Days", "15", false);
    row(u'r', "40000", "Batch/RS Days", "10", true);
    row(u'l', "0.5", "Batch/Stop Loss Limit", "0.5", false);
    row(u'l', "2", "Batch/Stop Loss Limit", "2", false);
    row(u'l', "ten", "Batch/Stop Loss Limit", "0.125", true);
  }
  void numericPrompts() {
    QFETCH(QChar, key);
    QFETCH(QString, answer);
    QFETCH(QString, setting);
    QFETCH(QString, expected);
    QFETCH(bool, refused);
    Opened o;
    o.dialogs.answers.push_back(answer);
    o.w->KeyCommand(key);
    const QStringList names = setting.split('/');
    const auto text =
        settings::GetSettingText(o.w->config(), names[0].toStdString(), names[1].toStdString())
            .text;
    QCOMPARE(QString::fromStdString(text), expected);
    QCOMPARE(o.dialogs.messages.size(), size_t{refused ? 1u : 0u});
    if (refused) QVERIFY(o.dialogs.messages[0].text.contains(answer));
  }

  void hotListCursorWrapsAndLeavesTheSelectionAlone() {
    Opened o({{"a.inc", "AMD\r\nAAL\r\nAVY\r\n"}, {"b.inc", ""}});  // a.inc comes first
    auto* hot = o.w->findChild<QListWidget*>(QStringLiteral("HotList"));
    runs::Session& s = o.w->session();
    o.w->KeyCommand(u',');
    QCOMPARE(s.hotListCursor, 2);
    QVERIFY(StatusPanel(*o.w, 1).endsWith(QStringLiteral("AVY")));
    o.w->KeyCommand(u'.');
    QCOMPARE(s.hotListCursor, 0);
    o.w->KeyCommand(u' ');
    QCOMPARE(s.hotListCursor, 1);
    QVERIFY(s.chartReady);
    QCOMPARE(hot->currentRow(), 0);

    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    lists->setCurrentIndex(lists->findText(QStringLiteral("b.inc")));
    o.w->KeyCommand(u'.');
    o.w->KeyCommand(u',');
    QCOMPARE(s.hotListCursor, 1);
    QVERIFY(!s.chartReady);
  }

  void togglesSayTheirNewState() {
    Opened o;
    o.w->KeyCommand(u'o');
    o.w->KeyCommand(u'e');
    o.w->KeyCommand(u'e');
    QCOMPARE(o.dialogs.messages.size(), size_t{3});
    QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Use Unusual Volume Status"));
    QCOMPARE(o.dialogs.messages[0].text, QStringLiteral("Use Unusual Volume Disabled"));
    QCOMPARE(o.dialogs.messages[1].text, QStringLiteral("RS Check Disabled"));
    QCOMPARE(o.dialogs.messages[2].text, QStringLiteral("RS Check Enabled"));
    QVERIFY(!o.w->config().useUnusualVolume);
    QVERIFY(LabelShown(*o.w));
  }

  void filterAndJumpLoadWhatWasTyped() {
    Opened o({{"two.inc", "AVY\r\nAMD\r\n"}});
    o.dialogs.answers = {QString("two"), QString("NOSUCH"), QString("AMD")};
    o.w->KeyCommand(u'f');
    QCOMPARE(o.w->session().listName, std::string("two"));
    QCOMPARE(o.w->findChild<QListWidget*>(QStringLiteral("HotList"))->count(), 2);
    QVERIFY(StatusPanel(*o.w, 1).endsWith(QStringLiteral("AVY")));
    o.w->KeyCommand(u'j');
    QVERIFY(LabelShown(*o.w));
    o.w->KeyCommand(u'j');
    QVERIFY(StatusPanel(*o.w, 1).endsWith(QStringLiteral("AMD")));

    o.dialogs.answers = {QString("nosuchlist")};
    o.w->KeyCommand(u'f');
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Error"));
  }

  void backtestKeysShowTheLogPane() {
    Opened o;
    o.w->KeyCommand(u'm');
    QVERIFY(o.w->backtestWindow().isVisible());
    QVERIFY(o.w->backtestWindow().text().contains(QStringLiteral("Backtesting - ")));
    o.w->KeyCommand(u'a');
    QVERIFY(!o.w->backtestWindow().isVisible());
    QVERIFY(!o.w->session().chartReady);
  }

  void scansOfferTheirListName() {
    Opened o;
    o.dialogs.saveAnswer = o.ws.lists() + "/found.inc";
    Trigger(*o.w, "bsScanMnu");
    Trigger(*o.w, "xHiMnu");
    QCOMPARE(o.dialogs.proposedSaves,
             (std::vector<QString>{o.ws.lists() + " / buy", o.ws.lists() + " / 4WeekHigh"}));
    QVERIFY(QFile::exists(o.ws.lists() + "/found.inc"));
    QVERIFY(o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"))->findText("found.inc") >= 0);
    QVERIFY(!o.w->progressWindow().isVisible());
  }

  // A scan that reaches a file the loader refuses names the file, the line and the problem,
  // with the symbols it passed before it, and offers nothing to save.
  void aScanStoppedByARefusedFileShowsWhatItFound() {
    Opened o;
    o.dialogs.saveAnswer = o.ws.lists() + "/whole.inc";
    Trigger(*o.w, "bsScanMnu");
    QStringList passed = FileText(o.ws.lists() + "/whole.inc").split("\r\n", Qt::SkipEmptyParts);
    QCOMPARE(passed.takeLast(), QStringLiteral("XLNX"));  // the list's last symbol
    QVERIFY(passed.size() > 1);

    o.ws.writePrices(QStringLiteral("XLNX"), kRefusedPrices);
    o.dialogs.proposedSaves.clear();
    Trigger(*o.w, "bsScanMnu");
    QVERIFY(o.dialogs.proposedSaves.empty());
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Error"));
    const QString text = o.dialogs.messages[0].text;
    QVERIFY2(text.endsWith(kXlnxRefused + "\n\nNothing was saved. Passed before it: " +
                           passed.join(QStringLiteral(", "))),
             qPrintable(text));
  }

  // Tools > Check Price Files: the loader's verdict on every file of the folder, in a window.
  void checkPriceFilesShowsWhatDoesNotLoad() {
    Opened o;
    o.ws.writePrices(QStringLiteral("ZZZ"), kRefusedPrices);
    Trigger(*o.w, "checkPriceFilesMnuItem");
    const auto* report = o.w->findChild<TextWindow*>(QStringLiteral("checkPriceFiles"));
    QVERIFY(report != nullptr);
    QVERIFY(report->isVisible());
    QCOMPARE(report->windowTitle(), QStringLiteral("Check Price Files"));
    QCOMPARE(report->text(), QStringLiteral("ZZZ.txt:2: the high \"two\" is not a number\n"
                                            "42 files checked: 1 does not load\n"));
    QVERIFY(o.dialogs.messages.empty());
  }

  // Trade > Today's Report: the newest day's daily reports in a window, or a message saying
  // there is none yet.
  void todaysReportShowsTheNewestDaysReports() {
    Workspace ws;
    const QString reports = ws.stocks() + QStringLiteral("/../reports");
    ws.writeSettings(QStringLiteral("[Paths]\nReport File Path=%1\n").arg(reports));
    FakeDialogs dialogs;
    auto w = ws.open(dialogs);
    auto* entry = w->findChild<QAction*>(QStringLiteral("todaysReportMnu"));
    QVERIFY(entry != nullptr);
    QCOMPARE(entry->text(), QStringLiteral("Today's &Report"));
    entry->trigger();
    QCOMPARE(dialogs.messages.size(), size_t{1});
    QCOMPARE(dialogs.messages[0].title, QStringLiteral("Today's Report"));
    QVERIFY(dialogs.messages[0].text.startsWith(QStringLiteral("There is no daily report in ")));
    QVERIFY(w->findChild<TextWindow*>(QStringLiteral("todaysReport")) == nullptr);

    QVERIFY(QDir().mkpath(reports));
    WriteBytes(reports + "/2026-11-23-sample.txt", "Daily report for sample on 11/23/2026\r\n");
    WriteBytes(reports + "/2026-11-24-sample.txt",
               "Daily report for sample on 11/24/2026\r\nABC\tBuy\r\n");
    entry->trigger();
    const auto* report = w->findChild<TextWindow*>(QStringLiteral("todaysReport"));
    QVERIFY(report != nullptr);
    QVERIFY(report->isVisible());
    QCOMPARE(report->windowTitle(), QStringLiteral("Today's Report - 2026-11-24"));
    QCOMPARE(report->text(), QStringLiteral("Daily report for sample on 11/24/2026\nABC\tBuy\n"));
    QCOMPARE(dialogs.messages.size(), size_t{1});
  }

  // The SEC asks for a contact: the first company-data run asks for it, refuses one without an
  // e-mail, and keeps a good one in the settings file.
  void companyDataFromTheSecAsksForAContactFirst() {
    Opened o({}, "[Services]\nEdgar Host=127.0.0.1:1\nEdgar Data Host=127.0.0.1:1\nRetries=0\n");
    auto* company = o.w->findChild<QAction*>(QStringLiteral("downloadCompanyDataMnuItem"));
    company->trigger();  // cancelled: nothing asked of the SEC, nothing stored
    QCOMPARE(o.dialogs.prompts.size(), size_t{1});
    QVERIFY(o.dialogs.prompts[0].startsWith(QStringLiteral("Contact / ")));
    QVERIFY(!o.ws.settingsText().contains(QStringLiteral("Contact=")));
    o.dialogs.answers = {QStringLiteral("nobody")};
    company->trigger();
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QVERIFY(o.dialogs.messages[0].text.contains(QStringLiteral("Contact")));
    o.dialogs.answers = {QStringLiteral("Jane Doe jane@example.com")};
    company->trigger();
    QVERIFY(o.ws.settingsText().contains(QStringLiteral("Contact=Jane Doe jane@example.com")));
    company->trigger();  // asked once only
    QCOMPARE(o.dialogs.prompts.size(), size_t{3});
  }

  // While a scan runs the window keeps painting but takes no other command; Cancel stops it
  // between two stocks and nothing is offered for saving.
  void aCancelledScanSavesNothing() {
    Opened o;
    o.w->show();
    bool menusWhileRunning = true;
    QString shownWhileRunning;
    QTimer::singleShot(0, o.w.get(), [&] {
      menusWhileRunning = o.w->menuBar()->isEnabled();
      shownWhileRunning =
          o.w->progressWindow().labelText() + " | " + o.w->progressWindow().barText();
      QTest::keyClicks(o.w->findChild<QListWidget*>(QStringLiteral("HotList")), "y");
      o.w->progressWindow().Cancel();
    });
    o.dialogs.saveAnswer = o.ws.lists() + "/never.inc";
    Trigger(*o.w, "bsScanMnu");
    QVERIFY(!menusWhileRunning);
    QCOMPARE(o.w->config().currentView, 4);  // the key typed meanwhile was no command
    QCOMPARE(shownWhileRunning, QStringLiteral("Processing stock #0 of 39 | 0%"));
    QVERIFY(o.dialogs.proposedSaves.empty());
    QVERIFY(!QFile::exists(o.ws.lists() + "/never.inc"));
    QVERIFY(o.w->menuBar()->isEnabled());
    QVERIFY(!o.w->progressWindow().isVisible());
  }

  // Looking never writes the stock database: start-up, the information page and a rank scan
  // work while it does not exist, and it first appears when a command that writes it runs.
  void onlyACommandThatWritesCreatesTheStockDatabase() {
    Opened o;
    const QString database = o.ws.lists() + "/stockdata.mdb";
    QVERIFY(!QFile::exists(database));
    o.w->findChild<QListWidget*>(QStringLiteral("HotList"))->setCurrentRow(1);
    QCOMPARE(o.w->findChild<QPlainTextEdit*>(QStringLiteral("stockSummary"))->toPlainText(),
             QStringLiteral("Not yet downloaded"));
    o.dialogs.saveAnswer = o.ws.lists() + "/ranked.inc";
    Trigger(*o.w, "topRSRankScanMnuItem");
    QCOMPARE(o.dialogs.proposedSaves.size(), size_t{1});            // the scan ran to its end
    QCOMPARE(FileBytes(o.dialogs.saveAnswer), QByteArray("\r\n"));  // nothing was ranked
    QVERIFY(o.dialogs.messages.empty());
    QVERIFY(!QFile::exists(database));
    Trigger(*o.w, "computeRSRankMnuItem");
    QVERIFY(o.dialogs.messages.empty());
    QVERIFY(QFile::exists(database));
  }

  // Every scan of the library has its menu entry, and so has every secondary window.
  void theMenusOfferEveryScan() {
    Opened o;
    const QMenu* scans = o.w->menuBar()->findChildren<QMenu*>().at(2);
    QCOMPARE(scans->title(), QStringLiteral("&Scans"));
    QCOMPARE(scans->actions().size(), 11);
    for (const QAction* a : scans->actions()) QVERIFY2(a->isEnabled(), qPrintable(a->text()));
    for (const char* window : {"downloaderMnu", "boolOpMnu", "backTestMnu"}) {
      QVERIFY(o.w->findChild<QAction*>(QString::fromLatin1(window))->isEnabled());
    }
  }

  void onlyClosingAndQWriteTheSettings() {
    for (const int how : {0, 1, 2}) {  // Exit, "q", close
      Opened o;
      o.dialogs.answers.push_back(QString("2"));
      o.w->KeyCommand(u'u');
      if (how == 0) Trigger(*o.w, "exitMnuItem");
      if (how == 1) o.w->KeyCommand(u'q');
      if (how == 2) o.w->close();
      QCOMPARE(o.ws.settingsText().contains(QStringLiteral("BuyMode=2")), how != 0);
    }
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::MainFrmTest)
#include "main_frm_test.moc"
