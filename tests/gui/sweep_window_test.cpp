// The live trading and batch test windows: opening them, the levels prompts and what a bad
// answer leaves, the counters, the report growing run after run, the batch test's walk-forward
// choice, and the two saves.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include "gui_test_support.h"
#include "halvard/error.h"
#include "halvard/runs/batch_report.h"
#include "halvard/runs/live_report.h"
#include "sweep_window.h"

namespace halvard::gui::testing {
namespace {

const QString kStopLossPrompt =
    QStringLiteral("Stoploss ... / Enter stop loss as Start, Stop, Step in dollars e.g 1,2,0.5?");
const QString kRsPrompt = QStringLiteral(
    "Stoploss ... / Enter the relative strength comparison days as Start, Stop, Step e.g 5,10,2?");

QString Label(const QWidget* window, const char* name) {
  return window->findChild<QLabel*>(QString::fromLatin1(name))->text();
}

QString Shown(QWidget* window, const char* box) {
  return window->findChild<QPlainTextEdit*>(QString::fromLatin1(box))->toPlainText();
}

}  // namespace

class SweepWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // "d", "b" and the menu open their windows only for a list with symbols.
  void theWindowsOpenOnlyForAListWithSymbols() {
    Opened o({{"a-empty.inc", ""}});  // the first list
    o.w->KeyCommand(u'd');
    o.w->KeyCommand(u'b');
    Trigger(*o.w, "backTestMnu");
    QVERIFY(o.w->findChild<SweepWindow*>() == nullptr);
    auto* lists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    lists->setCurrentIndex(lists->findText(QStringLiteral("sample.inc")));
    o.w->KeyCommand(u'd');
    Trigger(*o.w, "backTestMnu");
    const auto* live = o.w->findChild<SweepWindow*>(QStringLiteral("LiveTradingForm"));
    const auto* batch = o.w->findChild<SweepWindow*>(QStringLiteral("BatchTest"));
    QVERIFY(live != nullptr && live->isVisible());
    QVERIFY(batch != nullptr && batch->isVisible());
    QCOMPARE(batch->windowTitle(), QStringLiteral("Back Testing"));
    // The samples end in 2017: the live report says its prices are old, the batch test has
    // no such line.
    QCOMPARE(Label(live, "StatusText"), QStringLiteral("newest prices are from 12/29/2017"));
    QCOMPARE(Label(batch, "StatusText"), QString());
  }

  // Both prompts, their titles and texts; an answer that is not three numbers, or a step that
  // never reaches the stop, is refused and the levels stay as they were.
  void levelsPromptsSetTheSweep() {
    Opened o;
    SweepWindow* live = o.w->OpenLiveTrading();
    o.dialogs.answers = {"1,2,0.5", "5,7,2", "1,2", "a,b,c", "5,x,2", "1,9,0", QString()};
    Click(*live, "LevelCommand");
    Click(*live, "RSLevelsBtn");
    Click(*live, "LevelCommand");
    Click(*live, "LevelCommand");
    Click(*live, "RSLevelsBtn");
    Click(*live, "RSLevelsBtn");
    Click(*live, "LevelCommand");  // cancelled
    QCOMPARE(o.dialogs.prompts,
             (std::vector<QString>{kStopLossPrompt, kRsPrompt, kStopLossPrompt, kStopLossPrompt,
                                   kRsPrompt, kRsPrompt, kStopLossPrompt}));
    QCOMPARE(o.dialogs.messages.size(), size_t{4});
    for (const auto& m : o.dialogs.messages) {
      QCOMPARE(m.title, QStringLiteral("Error"));
      QVERIFY2(m.text.endsWith(QStringLiteral("The levels are unchanged.")), qPrintable(m.text));
    }
    const runs::SweepLevels& l = o.w->sweepLevels();
    QCOMPARE(l.stopLossStart, 1.0);
    QCOMPARE(l.stopLossStop, 2.0);
    QCOMPARE(l.stopLossStep, 0.5);
    QCOMPARE(l.rsStart, 5);
    QCOMPARE(l.rsStop, 7);
    QCOMPARE(l.rsStep, 2);

    Click(*live, "GoBtn");
    const QString report = Shown(live, "LiveResults");
    QVERIFY(report.startsWith(
        QStringLiteral("Live Testing sample.inc for stoploss settings starting from 1 to 2 with "
                       "a step of 0.5\n for RS settings starting from 5 to 7 with a step of 2\n")));
    QCOMPARE(report.count(QStringLiteral("Starting Live Trading on ")), 6);
    const auto n = o.w->session().symbols.size();
    QCOMPARE(Label(live, "StockCount"), QStringLiteral("%1/%1").arg(n));
    QCOMPARE(Label(live, "StepCount"), QStringLiteral("Step 6 of 6"));
    // The last level of each range is what the engine ran with last.
    QCOMPARE(o.w->config().stopLossLimit, 2.0);
    QCOMPARE(o.w->config().rsDayCurr, 7);
  }

  // The report keeps every run until the window closes; opening again starts afresh, with the
  // levels of the current settings.
  void theReportGrowsUntilTheWindowCloses() {
    Opened o;
    SweepWindow* batch = o.w->OpenBatchTest();
    o.dialogs.answers = {"1,3,1"};
    Click(*batch, "LevelCommand");
    Click(*batch, "GoCommand");
    Click(*batch, "GoCommand");
    QCOMPARE(Shown(batch, "Results").count(QStringLiteral("Batch Testing sample.inc")), 2);
    QCOMPARE(Shown(batch, "Results").count(QStringLiteral("Maximum profit = ")), 2);
    QCOMPARE(Label(batch, "StepCount"), QStringLiteral("Step 3 of 3"));
    batch->close();
    QTest::qWait(0);  // the closed window deletes itself
    QVERIFY(o.w->findChild<SweepWindow*>() == nullptr);

    batch = o.w->OpenBatchTest();
    QVERIFY(Shown(batch, "Results").isEmpty());
    Click(*batch, "GoCommand");
    const QString report = Shown(batch, "Results");
    QCOMPARE(report.count(QStringLiteral("Step 1 of 1\n")), 1);
    QVERIFY(
        report.contains(QStringLiteral("Stoploss settings starting from 3 to 3 with a step "
                                       "of 1\n")));
  }

  // A run that reaches a file the loader refuses ends there: the window shows the rows of the
  // stocks before it and the error names the file, the line and the problem.
  void aRefusedFileEndsTheRunButTheRowsBeforeItAreShown() {
    Opened o;
    o.ws.writePrices(QStringLiteral("XLNX"), kRefusedPrices);
    const std::pair<SweepWindow*, const char*> runs[] = {{o.w->OpenLiveTrading(), "GoBtn"},
                                                         {o.w->OpenBatchTest(), "GoCommand"}};
    for (const auto& [window, go] : runs) {
      o.dialogs.messages.clear();
      Click(*window, go);
      QCOMPARE(o.dialogs.messages.size(), size_t{1});
      QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Error"));
      QVERIFY2(o.dialogs.messages[0].text.endsWith(kXlnxRefused),
               qPrintable(o.dialogs.messages[0].text));
      const QString shown = Shown(window, window == runs[0].first ? "LiveResults" : "Results");
      QVERIFY2(shown.contains(QStringLiteral("\nTMO\t")), qPrintable(shown));
      QVERIFY(!shown.contains(QStringLiteral("XLNX")));
    }
  }

  // A sweep of many passes (which walk the list together, in groups) shows the report and leaves
  // the log pane's text that one thread gives when every pass walks the list itself, whatever
  // the jobs; also when a refused file ends it in the middle of the list.
  void aSweepShowsAndLogsWhatEachPassWalkingTheListAloneGives() {
    const runs::RunSwitches all{.corvane = true, .pyramidingBoxes = true, .positiveRS = true};
    for (const bool live : {true, false}) {
      for (const bool refused : {false, true}) {
        Opened r;
        if (refused) r.ws.writePrices(QStringLiteral("AMD"), kRefusedPrices);
        runs::Session& s = r.w->session();
        s.config.jobs = 1;
        platform::NoProgress quiet;
        runs::LiveReport liveReport(s, quiet);
        runs::BatchReport batchReport(s, quiet);
        runs::ListReport& reference = live ? static_cast<runs::ListReport&>(liveReport)
                                           : static_cast<runs::ListReport&>(batchReport);
        reference.GroupPasses(1);
        runs::ParseStopLossLevels("0.5,3,0.5", reference.levels);
        runs::ParseRsLevels("5,9,2", reference.levels);
        try {
          live ? liveReport.Run(all) : batchReport.GoCommand(all);
        } catch (const Error&) {
          QVERIFY(refused);
        }
        const QString shown = QString::fromStdString(reference.text()).remove(u'\r');
        const QString perPass = live ? QStringLiteral("Starting Live") : QStringLiteral("Step ");
        QCOMPARE(shown.count(perPass), refused ? 1 : 18);
        QVERIFY(s.log().text().find("Backtesting - ") != std::string::npos);
        for (const int jobs : {1, 2, 5}) {
          Opened o;
          if (refused) o.ws.writePrices(QStringLiteral("AMD"), kRefusedPrices);
          o.w->config().jobs = static_cast<int16_t>(jobs);
          SweepWindow* window = live ? o.w->OpenLiveTrading() : o.w->OpenBatchTest();
          o.dialogs.answers = {"0.5,3,0.5", "5,9,2"};
          Click(*window, "LevelCommand");
          Click(*window, "RSLevelsBtn");
          for (const char* box : {"CorvaneEnabled", "UnusualvolumeEnabled", "PositiveRSEnabled"}) {
            window->findChild<QCheckBox*>(QString::fromLatin1(box))->setChecked(true);
          }
          Click(*window, live ? "GoBtn" : "GoCommand");
          QCOMPARE(Shown(window, live ? "LiveResults" : "Results"), shown);
          QVERIFY2(o.w->session().log().text() == s.log().text(), live ? "live" : "batch");
          QCOMPARE(o.dialogs.messages.size(), size_t{refused ? 1u : 0u});
        }
      }
    }
  }

  // "Walk Forward" in "Back Testing": its folds only while checked; "&Run" then walks forward
  // once through the list, adds to the same report as the sweep, and leaves the settings as
  // they were (the sweep leaves its last level behind).
  void walkForwardIsAChoiceOfTheBackTestingWindow() {
    Opened o;
    SweepWindow* batch = o.w->OpenBatchTest();
    auto* walk = batch->findChild<QCheckBox*>(QStringLiteral("WalkForwardEnabled"));
    auto* folds = batch->findChild<QSpinBox*>(QStringLiteral("WalkForwardFolds"));
    QVERIFY(walk != nullptr && folds != nullptr);
    QCOMPARE(walk->text(), QStringLiteral("Walk Forward"));
    QVERIFY(!walk->isChecked());
    QVERIFY(!folds->isEnabled());
    walk->click();
    QVERIFY(folds->isEnabled());
    folds->setValue(2);
    batch->findChild<QCheckBox*>(QStringLiteral("UnusualvolumeEnabled"))->click();
    o.dialogs.answers = {"1,3,1"};
    Click(*batch, "LevelCommand");
    const double stopLoss = o.w->config().stopLossLimit;
    Click(*batch, "GoCommand");
    QString report = Shown(batch, "Results");
    QVERIFY2(report.startsWith(QStringLiteral("Walk Forward Testing sample.inc in 2 folds\n")),
             qPrintable(report));
    QVERIFY(report.contains(QStringLiteral("\n1\t")));
    QVERIFY(report.contains(QStringLiteral("\n2\t")));
    QVERIFY(report.contains(QStringLiteral("\nOut-of-sample total = ")));
    QVERIFY(!report.contains(QStringLiteral("Batch Testing")));
    QCOMPARE(Label(batch, "StepCount"), QStringLiteral("Step 1 of 1"));
    QCOMPARE(o.w->config().stopLossLimit, stopLoss);

    walk->click();
    Click(*batch, "GoCommand");
    report = Shown(batch, "Results");
    QVERIFY(report.indexOf(QStringLiteral("Batch Testing sample.inc")) >
            report.indexOf(QStringLiteral("Out-of-sample total = ")));
    QCOMPARE(Label(batch, "StepCount"), QStringLiteral("Step 3 of 3"));
    QCOMPARE(o.w->config().stopLossLimit, 3.0);
  }

  // "&Save Results" writes everything shown, CR LF line ends and one more at the end, in the
  // watch-list folder by default; "Save &Inc" after a pass with no "Buy" row writes one CR LF.
  void savesWriteTheReportAndTheList() {
    Opened o;
    SweepWindow* live = o.w->OpenLiveTrading();
    Click(*live, "GoBtn");  // no switch checked: the engine trades nothing, every row is "Skip"
    o.dialogs.reportAnswer = o.ws.lists() + "/live.txt";
    o.dialogs.saveAnswer = o.ws.lists() + "/buy.inc";
    Click(*live, "SaveResults");
    Click(*live, "saveInc");
    QCOMPARE(o.dialogs.reportFolders, std::vector<QString>{o.ws.lists()});
    QCOMPARE(o.dialogs.proposedSaves, std::vector<QString>{o.ws.lists() + " / "});
    const QString saved = FileText(o.ws.lists() + "/live.txt");
    QCOMPARE(QString(saved).remove(u'\r'), Shown(live, "LiveResults") + "\n");
    QCOMPARE(saved.count(QStringLiteral("\r\n")), saved.count(u'\n'));
    QCOMPARE(FileText(o.ws.lists() + "/buy.inc"), QStringLiteral("\r\n"));

    o.dialogs.reportAnswer.clear();  // cancelled: nothing written
    QFile::remove(o.ws.lists() + "/live.txt");
    Click(*live, "SaveResults");
    QVERIFY(!QFile::exists(o.ws.lists() + "/live.txt"));
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::SweepWindowTest)
#include "sweep_window_test.moc"
