// The boolean operations window: browsing the saved records with their status texts, adding
// and deleting them, and running one or all of them into watch lists.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "boolean_window.h"
#include "gui_test_support.h"

namespace halvard::gui::testing {
namespace {

QString Current(BooleanWindow& b, const char* box) {
  return b.findChild<QComboBox*>(QString::fromLatin1(box))->currentText();
}

QString Result(BooleanWindow& b) {
  return b.findChild<QLineEdit*>(QStringLiteral("resInc"))->text();
}

QString Status(BooleanWindow& b) {
  return b.statusText(1) + "|" + b.statusText(2);
}

const QString kNothingOnView =
    QStringLiteral(" Edit data and add a new record by clicking Add| Empty boolean data file");

// Two lists and two saved records; the second names its first list and its operation in
// capitals.
const Opened::Lists kRecords = {
    {"a.inc", "AAA\r\nBBB\r\nCCC\r\n"},
    {"b.inc", "bbb\r\nDDD\r\n"},
    {"booldb.dat", "a.inc:union:b.inc:u.inc\r\nA.INC:Difference:b.inc:d.inc\r\n"}};

}  // namespace

class BooleanWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // The arrows walk the records; one step before the first is the place for a new record,
  // where the controls keep what they showed.
  void browsingShowsEachRecordAndThePlaceForANewOne() {
    Opened o(kRecords);
    BooleanWindow b(*o.w);
    QCOMPARE(b.windowTitle(), QStringLiteral("Boolean Operations"));
    QCOMPARE(Status(b), QStringLiteral(" Currently Viewing Record #1|2 Records in file "));
    QCOMPARE(Current(b, "firstList") + Current(b, "operation") + Current(b, "secondList"),
             QStringLiteral("a.incunionb.inc"));
    QCOMPARE(Result(b), QStringLiteral("u.inc"));
    Click(b, "goRightBtn");
    Click(b, "goRightBtn");  // there is no third
    QCOMPARE(Status(b), QStringLiteral(" Currently Viewing Record #2|2 Records in file "));
    QCOMPARE(Current(b, "firstList"), QStringLiteral("a.inc"));  // chosen without regard to case
    QCOMPARE(Current(b, "operation"), QStringLiteral("difference"));
    QCOMPARE(Result(b), QStringLiteral("d.inc"));
    for (int i = 0; i < 3; ++i) Click(b, "goLeftBtn");
    // Nothing on view, but the file still holds its two records.
    QCOMPARE(Status(b),
             QStringLiteral(" Edit data and add a new record by clicking Add|2 Records in file "));
    QCOMPARE(Result(b), QStringLiteral("u.inc"));
    Click(b, "goRightBtn");
    QCOMPARE(Status(b), QStringLiteral(" Currently Viewing Record #1|2 Records in file "));
    QVERIFY(o.dialogs.messages.empty());
  }

  // A missing booldb.dat starts empty; every change is saved at once.
  void addAndDeleteSaveTheFile() {
    Opened o({{"a.inc", "AAA\r\n"}, {"b.inc", "BBB\r\n"}});
    BooleanWindow b(*o.w);
    const QString file = o.ws.lists() + "/booldb.dat";
    QCOMPARE(FileText(file), QString());
    QCOMPARE(Status(b), kNothingOnView);
    Click(b, "addRecBtn");  // no result name: no record
    QCOMPARE(b.records().count(), 0);
    b.findChild<QComboBox*>(QStringLiteral("secondList"))->setCurrentText("b.inc");
    b.findChild<QComboBox*>(QStringLiteral("operation"))->setCurrentText("intersect");
    b.findChild<QLineEdit*>(QStringLiteral("resInc"))->setText("i.inc");
    Click(b, "addRecBtn");
    QCOMPARE(FileText(file), QStringLiteral("a.inc:intersect:b.inc:i.inc\r\n"));
    QCOMPARE(Status(b), QStringLiteral(" Currently Viewing Record #1|1 Records in file "));
    Click(b, "delRecBtn");
    QCOMPARE(FileText(file), QString());
    QCOMPARE(Status(b), kNothingOnView);
  }

  // "&Run" combines the lists as the controls show them, "&Run All" every record in turn; the
  // main window's list of watch lists then holds the results.
  void runningWritesTheResultLists() {
    Opened o(kRecords);
    BooleanWindow b(*o.w);
    Click(b, "runRecBtn");
    QCOMPARE(FileText(o.ws.lists() + "/u.inc"), QStringLiteral("AAA\r\nBBB\r\nCCC\r\nDDD\r\n"));
    QVERIFY(!QFile::exists(o.ws.lists() + "/d.inc"));
    auto* mainLists = o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"));
    QVERIFY(mainLists->findText(QStringLiteral("u.inc")) >= 0);
    Click(b, "runAllBtn");
    // "Difference" is the drop-down's "difference", as the window shows the record.
    QCOMPARE(FileText(o.ws.lists() + "/d.inc"), QStringLiteral("AAA\r\nCCC\r\n"));
    QCOMPARE(Status(b), QStringLiteral(" Currently Viewing Record #2|2 Records in file "));
    QVERIFY(mainLists->findText(QStringLiteral("d.inc")) >= 0);

    // A record naming a list that is not there stops with a message and stays on view.
    o.ws.writeList(QStringLiteral("booldb.dat"),
                   QStringLiteral("nosuch.inc:union:b.inc:n.inc\r\n"));
    BooleanWindow again(*o.w);
    Click(again, "runAllBtn");
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QCOMPARE(o.dialogs.messages[0].title, QStringLiteral("Error"));
    QVERIFY(!QFile::exists(o.ws.lists() + "/n.inc"));
  }

  void theMenuOpensItModally() {
    Opened o;
    QString seen;
    QTimer::singleShot(0, o.w.get(), [&] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal == nullptr) return;
      seen = modal->windowTitle();
      modal->close();
    });
    Trigger(*o.w, "boolOpMnu");
    QCOMPARE(seen, QStringLiteral("Boolean Operations"));
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::BooleanWindowTest)
#include "boolean_window_test.moc"
