// The options dialog: what it shows, what OK writes, what Cancel keeps.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "gui_test_support.h"
#include "options_dialog.h"

namespace halvard::gui::testing {

class OptionsDialogTest : public QObject {
  Q_OBJECT

  settings::Config config_;
  int saves_ = 0;
  FakeDialogs dialogs_;

  std::unique_ptr<OptionsDialog> Open() {
    return std::make_unique<OptionsDialog>(
        config_, [this] { ++saves_; }, dialogs_);
  }
  template <class T>
  static T* Control(OptionsDialog& d, const char* name) {
    return d.findChild<T*>(QString::fromLatin1(name));
  }

 private slots:
  void init() {
    config_ = settings::Config();
    config_.StockFilePath = "/stocks";
    config_.IncFilePath = "/lists";
    config_.buyMode = 2;
    config_.unusualVolumePercentage = 0.3;
    config_.periodXQuantity = 7;
    saves_ = 0;
    dialogs_ = FakeDialogs();
  }

  void okWithoutChangesKeepsEverySettingAndSaves() {
    const auto before = SettingLines(config_);
    auto d = Open();
    QCOMPARE(d->tabs()->currentIndex(), 0);
    QCOMPARE(Control<QComboBox>(*d, "buyModeCombo")->currentText(), QStringLiteral("bounce"));
    QCOMPARE(Control<QLineEdit>(*d, "uvLimit")->text(), QStringLiteral("0.3"));
    Click(*d, "cmdOK");
    QCOMPARE(d->result(), int(QDialog::Accepted));
    QCOMPARE(saves_, 1);
    QVERIFY(SettingLines(config_) == before);
  }

  void okWritesEveryControlBack() {
    auto d = Open();
    Control<QComboBox>(*d, "buyModeCombo")->setCurrentIndex(0);  // boxTop
    Control<QLineEdit>(*d, "stockPath")->setText("/other");
    Control<QLineEdit>(*d, "rsLimit")->setText("25");
    Control<QLineEdit>(*d, "slLimit")->setText("0.75");
    Control<QLineEdit>(*d, "XQuantity")->setText("9");
    Control<QLineEdit>(*d, "EPSRankScanPercent")->setText("15");
    Control<QCheckBox>(*d, "uvEnabled")->setChecked(false);
    Click(*d, "cmdOK");
    QCOMPARE(config_.buyMode, 1);
    QCOMPARE(config_.StockFilePath, std::string("/other"));
    QCOMPARE(config_.rsDayCurr, 25);
    QCOMPARE(config_.stopLossLimit, 0.75);
    QCOMPARE(config_.periodXQuantity, 9);
    QCOMPARE(config_.EPSRankScanPercentage, 15);
    QVERIFY(!config_.useUnusualVolume);
  }

  // Each number field stores what --set would store for the same text, so a field tied to the
  // wrong setting, or read another way, shows here.
  void everyNumberFieldReadsItsSettingAsTheSettingsFileDoes() {
    const struct {
      const char* field;
      const char* setting;  // section/name
    } fields[] = {
        {"rsLimit", "Batch/RS Days"},
        {"uvLimit", "Batch/Unusual Volume Percentage"},
        {"slLimit", "Batch/Stop Loss Limit"},
        {"f2weekPeriod", "Scans/52 Week Period"},
        {"XWeekPeriod", "Scans/X Week Period"},
        {"XQuantity", "Scans/X Week Quantity"},
        {"BoxScanPeriod", "Scans/Box scan Period"},
        {"EPSRankScanPercent", "Scans/Rank Scan Percentage"},
        {"RSRankScanPercent", "Scans/RS Rank Scan Percentage"},
    };
    for (const auto& f : fields) {
      init();
      const std::string setting = f.setting;
      const std::string section = setting.substr(0, setting.find('/'));
      const std::string name = setting.substr(setting.find('/') + 1);
      settings::Config expected = config_;
      settings::SetSettingFromText(expected, section, name, " 42.5 ");
      auto d = Open();
      Control<QLineEdit>(*d, f.field)->setText(QStringLiteral(" 42.5 "));
      Click(*d, "cmdOK");
      QVERIFY2(SettingLines(config_) == SettingLines(expected), f.field);
      QVERIFY2(settings::GetSettingText(config_, section, name).text.starts_with("42"), f.field);
    }
  }

  // A field that does not convert stops OK: the dialog stays open on the field's page, nothing
  // is saved or stored, and one message names the first refused field in the order OK reads
  // them (the RS days before the stop loss above them; the services after the other settings).
  // A number that is not finite is refused as the settings file would refuse it when read back.
  void aRefusedFieldStopsOkAndChangesNothing_data() {
    QTest::addColumn<QStringList>("typed");  // "field=text", in the order typed
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("page");
    QTest::newRow("no number") << QStringList{"stockPath=/other", "f2weekPeriod=twelve"}
                               << QStringLiteral(
                                      "\"twelve\" is not a whole number from -32768 to "
                                      "32767. Period for 52 week High is unchanged.")
                               << 2;
    QTest::newRow("not finite")
        << QStringList{"slLimit=nan"}
        << QStringLiteral("\"nan\" is not a finite number. Stop Loss Limit is unchanged.") << 1;
    QTest::newRow("reading order")
        << QStringList{"slLimit=1/8", "rsLimit=40000"}
        << QStringLiteral(
               "\"40000\" is not a whole number from -32768 to 32767. RS Days Limit is unchanged.")
        << 1;
    QTest::newRow("service") << QStringList{"slLimit=0.5", "Services/Timeout=0"}
                             << QStringLiteral(
                                    "setting [Services] Timeout = \"0\" is not a number "
                                    "of seconds from 1 to 3600")
                             << 3;
  }
  void aRefusedFieldStopsOkAndChangesNothing() {
    QFETCH(QStringList, typed);
    QFETCH(QString, message);
    QFETCH(int, page);
    const auto before = SettingLines(config_);
    auto d = Open();
    d->show();
    int storeCalls = 0;
    d->AddServicesPage({}, [&](const std::vector<settings::ServiceText>&) { ++storeCalls; });
    for (const QString& field : typed) {
      Control<QLineEdit>(*d, qPrintable(field.section(u'=', 0, 0)))
          ->setText(field.section(u'=', 1));
    }
    Click(*d, "cmdOK");
    QVERIFY(d->isVisible());
    QCOMPARE(saves_, 0);
    QCOMPARE(storeCalls, 0);
    QVERIFY(SettingLines(config_) == before);
    QCOMPARE(dialogs_.messages.size(), size_t{1});
    QCOMPARE(dialogs_.messages[0].text, message);
    QCOMPARE(d->tabs()->currentIndex(), page);
  }

  void theGraphCheckBoxActsAtOnceAndCancelKeepsIt() {
    auto d = Open();
    Control<QCheckBox>(*d, "enableGraphShowing")->click();
    QVERIFY(!config_.enableGraphUpdate);
    Click(*d, "cmdCancel");
    QVERIFY(!config_.enableGraphUpdate);
    QCOMPARE(saves_, 0);
  }

  void ctrlTabWrapsFromTheLastPage() {
    auto d = Open();
    d->show();
    QVERIFY(QTest::qWaitForWindowActive(d.get()));
    d->tabs()->setCurrentIndex(2);
    QTest::keyClick(Control<QLineEdit>(*d, "XQuantity"), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(d->tabs()->currentIndex(), 0);
    QTest::keyClick(Control<QLineEdit>(*d, "incPath"), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(d->tabs()->currentIndex(), 1);
  }

  // The Services page: one field a value, checked as the command line checks it; only what was
  // changed is written, after the other settings.
  void theServicesPageWritesOnlyWhatChanged() {
    auto d = Open();
    std::vector<settings::ServiceText> stored;
    int storeCalls = 0;
    settings::ServiceSettings current;
    current.tiingoToken = "secret";
    d->AddServicesPage(current, [&](const std::vector<settings::ServiceText>& changed) {
      stored = changed;
      ++storeCalls;
    });
    QCOMPARE(d->tabs()->tabText(d->tabs()->count() - 1), QStringLiteral("Se&rvices"));
    auto* token = Control<QLineEdit>(*d, "Services/Tiingo Token");
    QCOMPARE(token->text(), QStringLiteral("secret"));
    QVERIFY(token->echoMode() != QLineEdit::Normal);  // a key is not shown over a shoulder
    QCOMPARE(Control<QLineEdit>(*d, "Services/Fundamentals")->text(), QStringLiteral("edgar"));
    Control<QLineEdit>(*d, "Services/Provider")->setText(" Chart, Tiingo ");
    Control<QLineEdit>(*d, "Services/Contact")->setText("Jane Doe jane@example.com");
    Click(*d, "cmdOK");
    QCOMPARE(saves_, 1);
    QCOMPARE(storeCalls, 1);
    QCOMPARE(stored.size(), size_t{2});
    QCOMPARE(stored[0].name, std::string("Provider"));
    QCOMPARE(stored[0].text, std::string("chart,tiingo"));
    QCOMPARE(stored[1].name, std::string("Contact"));
  }

  void folderPickersFillTheirFieldUnlessCancelled() {
    auto d = Open();
    dialogs_.folderAnswer = "/picked";
    Click(*d, "sfPathBtn");
    QCOMPARE(Control<QLineEdit>(*d, "stockPath")->text(), QStringLiteral("/picked"));
    Click(*d, "rfPathBtn");
    QCOMPARE(Control<QLineEdit>(*d, "reportPath")->text(), QStringLiteral("/picked"));
    dialogs_.folderAnswer.clear();
    Click(*d, "ifPathBtn");
    QCOMPARE(Control<QLineEdit>(*d, "incPath")->text(), QStringLiteral("/lists"));
  }
};

}  // namespace halvard::gui::testing

QTEST_MAIN(halvard::gui::testing::OptionsDialogTest)
#include "options_dialog_test.moc"
