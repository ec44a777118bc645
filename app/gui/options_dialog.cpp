#include "options_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>
#include <optional>
#include <variant>

#include "dialogs.h"
#include "halvard/platform/number_text.h"
#include "services_page.h"
#include "typed_number.h"

namespace halvard::gui {
namespace {

QWidget* NewPage(QTabWidget* tabs, const QString& caption) {
  auto* page = new QWidget(tabs);
  page->setObjectName(QStringLiteral("picOptions"));
  tabs->addTab(page, caption);
  return page;
}

QString Text(double value) {
  return QString::fromStdString(platform::FormatGeneral(value));
}
QString Text(int16_t value) {
  return QString::number(value);
}

// A check box on a row of its own.
QCheckBox* AddCheckBox(QFormLayout* form, const char* objectName, const QString& caption) {
  auto* box = new QCheckBox(caption);
  box->setObjectName(QString::fromLatin1(objectName));
  form->addRow(box);
  return box;
}

// A path field with its folder button beside it.
QLineEdit* AddPathRow(QFormLayout* form, const char* field, const char* button,
                      const QString& label) {
  auto* row = new QWidget;
  auto* box = new QHBoxLayout(row);
  box->setContentsMargins(0, 0, 0, 0);
  auto* edit = new QLineEdit(row);
  edit->setObjectName(QString::fromLatin1(field));
  edit->setMinimumWidth(320);
  auto* pick = new QPushButton(QStringLiteral("..."), row);
  pick->setObjectName(QString::fromLatin1(button));
  box->addWidget(edit, 1);
  box->addWidget(pick);
  form->addRow(label, row);
  return edit;
}

}  // namespace

OptionsDialog::OptionsDialog(settings::Config& config, std::function<void()> save, Dialogs& dialogs,
                             QWidget* parent)
    : QDialog(parent),
      config_(config),
      save_(std::move(save)),
      dialogs_(dialogs),
      tbsOptions_(new QTabWidget(this)) {
  setObjectName(QStringLiteral("frmOptions"));
  setWindowTitle(QStringLiteral("Options"));
  setModal(true);
  tbsOptions_->setObjectName(QStringLiteral("tbsOptions"));

  auto* paths = new QFormLayout(NewPage(tbsOptions_, QStringLiteral("Configuration")));
  tbsOptions_->setTabToolTip(0, QStringLiteral("Set Paths to Various Directories"));
  incPath_ = AddPathRow(paths, "incPath", "ifPathBtn", QStringLiteral("Inc File Path"));
  stockPath_ = AddPathRow(paths, "stockPath", "sfPathBtn", QStringLiteral("Stock File Path"));
  reportPath_ = AddPathRow(paths, "reportPath", "rfPathBtn", QStringLiteral("Report File Path"));

  auto* trading = new QFormLayout(NewPage(tbsOptions_, QStringLiteral("&Trading Options")));
  buyModeCombo_ = new QComboBox;
  buyModeCombo_->setObjectName(QStringLiteral("buyModeCombo"));
  buyModeCombo_->addItems({QStringLiteral("boxTop"), QStringLiteral("bounce")});
  trading->addRow(QStringLiteral("Buy Mode"), buyModeCombo_);
  rsCheckEnabled_ = AddCheckBox(trading, "rsCheckEnabled", QStringLiteral("RS Check Enabled"));
  uvEnabled_ = AddCheckBox(trading, "uvEnabled", QStringLiteral("Use Unusual Volume"));
  slLimit_ = AddField(trading, "slLimit", QStringLiteral("Stop Loss Limit"));
  rsLimit_ = AddField(trading, "rsLimit", QStringLiteral("RS Days Limit"));
  uvLimit_ = AddField(trading, "uvLimit", QStringLiteral("Unusual Volume Percentage"));

  auto* scans = new QFormLayout(NewPage(tbsOptions_, QStringLiteral("&Scan Options")));
  RSRankScanPercent_ =
      AddField(scans, "RSRankScanPercent", QStringLiteral("RS Rank Scan Top %age"));
  EPSRankScanPercent_ =
      AddField(scans, "EPSRankScanPercent", QStringLiteral("EPS Rank Scan Top %age"));
  enableGraphShowing_ =
      AddCheckBox(scans, "enableGraphShowing", QStringLiteral("Update Graphs During Scans"));
  BoxScanPeriod_ = AddField(scans, "BoxScanPeriod", QStringLiteral("Period for other scans"));
  XWeekPeriod_ = AddField(scans, "XWeekPeriod", QStringLiteral("Period for X week High"));
  XQuantity_ = AddField(scans, "XQuantity", QStringLiteral("For X Week High, X ="));
  f2weekPeriod_ = AddField(scans, "f2weekPeriod", QStringLiteral("Period for 52 week High"));

  using settings::Config;
  numbers_ = {
      {rsLimit_, QStringLiteral("RS Days Limit"), &Config::rsDayCurr},
      {uvLimit_, QStringLiteral("Unusual Volume Percentage"), &Config::unusualVolumePercentage},
      {slLimit_, QStringLiteral("Stop Loss Limit"), &Config::stopLossLimit},
      {f2weekPeriod_, QStringLiteral("Period for 52 week High"), &Config::period52week},
      {XWeekPeriod_, QStringLiteral("Period for X week High"), &Config::periodXweek},
      {XQuantity_, QStringLiteral("For X Week High, X"), &Config::periodXQuantity},
      {BoxScanPeriod_, QStringLiteral("Period for other scans"), &Config::periodBoxScan},
      {EPSRankScanPercent_, QStringLiteral("EPS Rank Scan Top %age"),
       &Config::EPSRankScanPercentage},
      {RSRankScanPercent_, QStringLiteral("RS Rank Scan Top %age"), &Config::RSRankScanPercentage},
  };

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
  connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tbsOptions_);
  layout->addWidget(buttons);

  // The one control that takes effect at once.
  connect(enableGraphShowing_, &QCheckBox::clicked, this,
          [this](bool checked) { config_.enableGraphUpdate = checked; });
  const auto pick = [this](QLineEdit* field, const QString& title) {
    const QString folder = dialogs_.pickFolder(this, title, field->text());
    if (!folder.isEmpty()) field->setText(folder);
  };
  connect(findChild<QPushButton*>(QStringLiteral("ifPathBtn")), &QPushButton::clicked, this,
          [this, pick] { pick(incPath_, QStringLiteral("Inc Files Path")); });
  connect(findChild<QPushButton*>(QStringLiteral("sfPathBtn")), &QPushButton::clicked, this,
          [this, pick] { pick(stockPath_, QStringLiteral("Stock Files Path")); });
  connect(findChild<QPushButton*>(QStringLiteral("rfPathBtn")), &QPushButton::clicked, this,
          [this, pick] { pick(reportPath_, QStringLiteral("Daily Reports Path")); });
  // Ctrl+Tab alone goes forward and wraps from the last page to the first.
  auto* next = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), this);
  connect(next, &QShortcut::activated, this, &OptionsDialog::NextTab);

  Load();
}

QLineEdit* OptionsDialog::AddField(QFormLayout* form, const char* objectName,
                                   const QString& label) {
  auto* edit = new QLineEdit;
  edit->setObjectName(QString::fromLatin1(objectName));
  form->addRow(label, edit);
  return edit;
}

void OptionsDialog::Load() {
  adjustSize();
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }
  tbsOptions_->setCurrentIndex(0);
  const settings::Config& c = config_;
  incPath_->setText(QString::fromStdString(c.IncFilePath));
  stockPath_->setText(QString::fromStdString(c.StockFilePath));
  reportPath_->setText(QString::fromStdString(c.ReportFilePath));
  // buyMode 1 is the first item; a value with no item shows none.
  buyModeCombo_->setCurrentIndex(c.buyMode - 1 >= 0 && c.buyMode - 1 < 2 ? c.buyMode - 1 : -1);
  rsCheckEnabled_->setChecked(c.rsCheckEnabled);
  uvEnabled_->setChecked(c.useUnusualVolume);
  enableGraphShowing_->setChecked(c.enableGraphUpdate);
  for (const NumberField& field : numbers_) {
    std::visit([&](auto setting) { field.edit->setText(Text(c.*setting)); }, field.setting);
  }
}

void OptionsDialog::AddServicesPage(
    settings::ServiceSettings current,
    std::function<void(const std::vector<settings::ServiceText>&)> save) {
  services_ = new ServicesPage(std::move(current), std::move(save), tbsOptions_);
  tbsOptions_->addTab(services_, QStringLiteral("Se&rvices"));
  tbsOptions_->setTabToolTip(tbsOptions_->count() - 1,
                             QStringLiteral("Where prices and company data come from"));
}

void OptionsDialog::NextTab() {
  tbsOptions_->setCurrentIndex((tbsOptions_->currentIndex() + 1) % tbsOptions_->count());
}

void OptionsDialog::accept() {
  // Every number is read before anything is stored, so a bad field changes nothing.
  bool failed = false;
  const auto refuse = [&](QLineEdit* field, const QString& message) {
    if (failed) return;
    failed = true;
    for (int i = 0; i < tbsOptions_->count(); ++i) {
      if (tbsOptions_->widget(i)->isAncestorOf(field)) tbsOptions_->setCurrentIndex(i);
    }
    dialogs_.message(this, QStringLiteral("Error"), message, Dialogs::Icon::kCritical);
    field->setFocus();
    field->selectAll();
  };
  settings::Config typed = config_;
  for (const NumberField& field : numbers_) {
    std::visit(
        [&](auto setting) {
          const auto number = TypedAs(typed.*setting, field.edit->text(), field.what);
          if (number.value)
            typed.*setting = *number.value;
          else
            refuse(field.edit, number.refusal);
        },
        field.setting);
  }
  std::vector<settings::ServiceText> servicesChanged;
  if (services_ != nullptr && !failed) {
    QLineEdit* bad = nullptr;
    QString why;
    const auto changed = services_->Changed(bad, why);
    if (changed)
      servicesChanged = *changed;
    else
      refuse(bad, why);
  }
  if (failed) return;

  settings::Config& c = config_;
  c.StockFilePath = stockPath_->text().toStdString();
  c.IncFilePath = incPath_->text().toStdString();
  c.ReportFilePath = reportPath_->text().toStdString();
  c.useUnusualVolume = uvEnabled_->isChecked();
  c.rsCheckEnabled = rsCheckEnabled_->isChecked();
  c.buyMode = static_cast<int16_t>(buyModeCombo_->currentIndex() + 1);
  for (const NumberField& field : numbers_) {
    std::visit([&](auto setting) { c.*setting = typed.*setting; }, field.setting);
  }
  try {
    save_();
    if (services_ != nullptr) services_->Store(servicesChanged);
  } catch (const std::exception& e) {
    dialogs_.message(this, QStringLiteral("Error"), QString::fromStdString(e.what()),
                     Dialogs::Icon::kCritical);
    return;
  }
  QDialog::accept();
}

}  // namespace halvard::gui
