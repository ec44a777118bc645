#pragma once
// OptionsDialog (frmOptions, "Options"): edits the settings on three pages. Every control is
// filled from the Config when the dialog opens; OK writes every value back in a fixed order and
// saves the settings. The graph check box is the one control that acts at once: Cancel does not
// undo it. A numeric field that does not hold a number stops OK with a message before anything
// is written, so the settings never end up half-changed.

#include <QDialog>
#include <functional>
#include <variant>
#include <vector>

#include "halvard/settings/config.h"
#include "halvard/settings/services.h"

class QCheckBox;
class QFormLayout;
class QComboBox;
class QLineEdit;
class QTabWidget;

namespace halvard::gui {

class Dialogs;
class ServicesPage;

class OptionsDialog : public QDialog {
  Q_OBJECT

 public:
  // save writes the settings to the store (after OK has set them).
  OptionsDialog(settings::Config& config, std::function<void()> save, Dialogs& dialogs,
                QWidget* parent = nullptr);

  QTabWidget* tabs() const { return tbsOptions_; }

  // Adds the "Services" page over the [Services] section; OK then stores the values changed on
  // it with save, after the other settings.
  void AddServicesPage(settings::ServiceSettings current,
                       std::function<void(const std::vector<settings::ServiceText>&)> save);

 public slots:
  void accept() override;  // cmdOK

 private:
  void Load();
  void NextTab();
  QLineEdit* AddField(QFormLayout* form, const char* objectName, const QString& label);

  settings::Config& config_;
  std::function<void()> save_;
  Dialogs& dialogs_;

  QTabWidget* tbsOptions_;
  // Configuration
  QLineEdit* incPath_;
  QLineEdit* stockPath_;
  QLineEdit* reportPath_;
  // Trading Options
  QComboBox* buyModeCombo_;
  QCheckBox* rsCheckEnabled_;
  QCheckBox* uvEnabled_;
  QLineEdit* slLimit_;
  QLineEdit* rsLimit_;
  QLineEdit* uvLimit_;
  // Scan Options
  QLineEdit* RSRankScanPercent_;
  QLineEdit* EPSRankScanPercent_;
  QCheckBox* enableGraphShowing_;
  QLineEdit* BoxScanPeriod_;
  QLineEdit* XWeekPeriod_;
  QLineEdit* XQuantity_;
  QLineEdit* f2weekPeriod_;
  // Services
  ServicesPage* services_ = nullptr;

  // A number field with the setting it edits and its name in a refusal, in the order OK reads
  // them.
  struct NumberField {
    QLineEdit* edit;
    QString what;
    std::variant<int16_t settings::Config::*, double settings::Config::*> setting;
  };
  std::vector<NumberField> numbers_;
};

}  // namespace halvard::gui
