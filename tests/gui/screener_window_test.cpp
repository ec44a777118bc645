// The screener window: typed criteria reach the screener (seen in the query it shows), numbers
// that are none are refused, the local screen of a copy of the samples with what it could not
// apply or read, Cancel during a screen, and the saved list in the main window.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "gui_test_support.h"
#include "halvard/screener/criteria_table.h"
#include "halvard/screener/screen_query.h"
#include "progress_window.h"
#include "screener_window.h"

namespace halvard::gui::testing {
namespace {

QString Q(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString Text(ScreenerWindow& s, const QString& name) {
  if (auto* edit = s.findChild<QLineEdit*>(name)) return edit->text();
  return s.findChild<QLabel*>(name)->text();
}

// Types the text over the field's as a user does, ending with Return.
void Type(ScreenerWindow& s, const QString& name, const QString& text) {
  auto* field = s.findChild<QLineEdit*>(name);
  field->selectAll();
  QTest::keyClick(field, Qt::Key_Backspace);
  QTest::keyClicks(field, text);
  QTest::keyClick(field, Qt::Key_Return);
}

QStringList Listed(ScreenerWindow& s) {
  QStringList symbols;
  const auto* list = s.findChild<QListWidget*>(QStringLiteral("resultList"));
  for (int i = 0; i < list->count(); ++i) symbols << list->item(i)->text();
  symbols.sort();
  return symbols;
}

// The stocks whose newest close lies from low to high, read from the price files themselves:
// the row of the latest (yyyy-mm-dd) date, its fifth field.
QStringList ClosingBetween(const QString& folder, double low, double high) {
  QStringList symbols;
  for (const QString& name : QDir(folder).entryList({QStringLiteral("*.txt")}, QDir::Files)) {
    QFile file(folder + "/" + name);
    if (name.startsWith(u'^') || !file.open(QIODevice::ReadOnly)) continue;
    QString newest;
    double close = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n').mid(1)) {
      const QStringList fields = line.trimmed().split(u',');
      if (fields.size() < 5 || fields[0] <= newest) continue;
      newest = fields[0];
      close = fields[4].toDouble();
    }
    if (close >= low && close <= high) symbols << name.chopped(4);
  }
  return symbols;
}

}  // namespace

class ScreenerWindowTest : public QObject {
  Q_OBJECT

 private slots:
  // A control for every criterion of the tables, each given its own numbers, so a field wired
  // to the wrong criterion or the wrong end shows in the query; emptied, it is no criterion.
  void typedCriteriaReachTheScreener() {
    Opened o({}, "[Services]\nScreener Host=screener.example/v1/\n");
    ScreenerWindow s(*o.w);
    QVERIFY(!s.findChild<QCheckBox*>(QStringLiteral("localData"))->isChecked());
    screener::ScreenCriteria expected;
    for (const screener::TextCriterion& t : screener::TextCriteria()) {
      Type(s, Q(t.key), "Oil & " + Q(t.key));
      expected.*t.field = "Oil & " + std::string(t.key);
    }
    double n = 1;
    for (const screener::RangeCriterion& r : screener::RangeCriteria()) {
      QCOMPARE(Text(s, Q(r.key) + "-unit"), Q(r.unit));
      Type(s, Q(r.key) + "-min", QString::number(n));
      Type(s, Q(r.key) + "-max", QString::number(n + 0.5));
      expected.*r.field = {n, n + 0.5};
      n += 1;
    }
    QVERIFY(o.dialogs.messages.empty());
    const QString query = Text(s, "query");
    QCOMPARE(query, "http://screener.example/v1" + Q(screener::ScreenQuery(expected, 1)));
    QVERIFY(query.contains(QStringLiteral("industry=Oil%20%26%20industry&")));
    QVERIFY(query.contains(QStringLiteral("&price=1..1.5&volume=2..2.5&")));
    Type(s, "industry", QString());
    Type(s, "price-max", QString());
    QVERIFY(!s.criteria().price.max && s.criteria().industry.empty());
    QVERIFY(Text(s, "query").contains(QStringLiteral("?exchange=Oil%20%26%20exchange&")));
    QVERIFY(Text(s, "query").contains(QStringLiteral("&price=1..&volume=")));
  }

  // The local screen, chosen when no service is set: the stocks whose newest close is in the
  // range, what could not be applied (no local figure) and the file that did not load. A number
  // that is none is refused with the field named, changes nothing and stops a screen.
  void theLocalScreenAndWhatItCouldNotDo() {
    Workspace ws;
    ws.writePrices(QStringLiteral("ZZBAD"),
                   "Date,Open,High,Low,Close,Volume,Adj Close\nnot,a,price,line\n");
    FakeDialogs dialogs;
    auto w = ws.open(dialogs);
    ScreenerWindow s(*w);
    const QStringList expected = ClosingBetween(ws.stocks(), 20, 30);
    QVERIFY(expected.size() >= 2);
    QVERIFY(s.findChild<QCheckBox*>(QStringLiteral("localData"))->isChecked());
    Type(s, "price-min", "20");
    Type(s, "price-min", "2x0");
    QCOMPARE(dialogs.messages.size(), size_t{1});
    QCOMPARE(dialogs.messages[0].text,
             QStringLiteral("\"2x0\" is not a number. The least share price is unchanged."));
    QCOMPARE(Text(s, "price-min"), QStringLiteral("20"));
    // A page pasted into the field is quoted short.
    Type(s, "price-min", QString(300, u'9') + u'x');
    QCOMPARE(dialogs.messages.size(), size_t{2});
    QCOMPARE(dialogs.messages[1].text, QLatin1Char('"') + QString(200, u'9') +
                                           QStringLiteral("\"... (301 bytes in all) is not a "
                                                          "number. The least share price is "
                                                          "unchanged."));
    QCOMPARE(Text(s, "query"), QStringLiteral("/screen?price=20..&page=1"));
    Type(s, "price-max", "30");
    Type(s, "market-cap-min", "1000");
    s.findChild<QLineEdit*>(QStringLiteral("beta-max"))->setText("high");  // not left yet
    Click(s, "runBtn");
    QCOMPARE(dialogs.messages.size(), size_t{3});
    QVERIFY(dialogs.messages[2].text.contains(QStringLiteral("The most beta")));
    QVERIFY(Listed(s).isEmpty() && !s.findChild<QPushButton*>("saveBtn")->isEnabled());
    Type(s, "beta-max", "1.5");
    Click(s, "runBtn");
    QCOMPARE(dialogs.messages.size(), size_t{3});
    QCOMPARE(Listed(s), expected);
    QCOMPARE(Text(s, "foundLabel"),
             QStringLiteral("%1 symbols found in the local data.").arg(expected.size()));
    const QStringList notes = Text(s, "notesLabel").split(u'\n');
    QCOMPARE(notes.size(), 2);
    QVERIFY(notes[0].startsWith("Not applied") &&
            notes[0].endsWith(": market capitalisation, beta."));
    QVERIFY(notes[1].startsWith("Skipped: ") && notes[1].contains("ZZBAD"));

    // The symbols fill the list row by row, each in a cell of its own.
    s.show();
    auto* list = s.findChild<QListWidget*>(QStringLiteral("resultList"));
    QTRY_VERIFY(list->visualItemRect(list->item(1)).isValid());
    const QRect first = list->visualItemRect(list->item(0));
    const QRect second = list->visualItemRect(list->item(1));
    QCOMPARE(second.top(), first.top());
    QVERIFY(second.left() - first.left() >=
            list->fontMetrics().horizontalAdvance(QStringLiteral("WWWWW")));
    for (int i = 0; i < list->count(); ++i) {  // every name whole, none cut short
      QListWidgetItem* item = list->item(i);
      QVERIFY2(
          list->visualItemRect(item).width() >= list->fontMetrics().horizontalAdvance(item->text()),
          qPrintable(item->text()));
    }
  }

  // Over the main window, which owns the progress window, the screener is modal: Cancel must
  // still take a click sent through the platform, where modal blocking happens.
  void cancelStopsTheScreenFromTheModalWindow() {
    Opened o;
    o.w->show();
    ScreenerWindow s(*o.w);
    s.show();
    ProgressWindow& progress = o.w->progressWindow();
    QTimer::singleShot(0, &s, [&] {
      auto* cancel = progress.findChild<QPushButton*>();
      QTest::mouseClick(progress.windowHandle(), Qt::LeftButton, {},
                        cancel->mapTo(&progress, cancel->rect().center()));
    });
    Click(s, "runBtn");
    QVERIFY(s.result().cancelled);
    QVERIFY(Text(s, "foundLabel").startsWith(QStringLiteral("Cancelled: ")));
    QVERIFY(Listed(s).size() < ClosingBetween(o.ws.stocks(), 0, 1e9).size());
    QVERIFY(progress.windowModality() == Qt::NonModal);  // as the main window's runs have it
  }

  // From the menu: the window opens modally; a name is needed; the list saved under it is in the
  // main window's lists once the window closes.
  void theSavedListReachesTheMainWindow() {
    Opened o;
    QString saved;
    QTimer::singleShot(0, o.w.get(), [&] {
      auto* s = qobject_cast<ScreenerWindow*>(QApplication::activeModalWidget());
      if (s == nullptr) return;
      Type(*s, "price-min", "20");
      Type(*s, "price-max", "30");
      Click(*s, "runBtn");
      Click(*s, "saveBtn");
      Type(*s, "listName", "cheap");
      Click(*s, "saveBtn");
      saved = Text(*s, "savedLabel");
      s->close();
    });
    Trigger(*o.w, "screenerMnu");
    QCOMPARE(o.dialogs.messages.size(), size_t{1});
    QVERIFY(o.dialogs.messages[0].text.contains(QStringLiteral("name")));
    const QStringList expected = ClosingBetween(o.ws.stocks(), 20, 30);
    const QString file = o.ws.lists() + "/cheap.inc";
    QCOMPARE(saved, QStringLiteral("Saved %1 symbols to %2.").arg(expected.size()).arg(file));
    QStringList written = FileText(file).split("\r\n", Qt::SkipEmptyParts);
    written.sort();
    QCOMPARE(written, expected);
    QVERIFY(o.w->findChild<QComboBox*>(QStringLiteral("IncListBox"))->findText("cheap.inc") >= 0);
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::ScreenerWindowTest)
#include "screener_window_test.moc"
