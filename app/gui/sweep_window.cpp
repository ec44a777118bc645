#include "sweep_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "dialogs.h"
#include "halvard/data/watch_list.h"
#include "halvard/platform/clock.h"
#include "halvard/runs/stale_prices.h"
#include "main_frm.h"
#include "named.h"
#include "progress_window.h"

namespace halvard::gui {
namespace {

QLabel* Counter(const char* name) {
  auto* label = Named<QLabel>(name);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("Step 999 of 999")));
  return label;
}

}  // namespace

SweepWindow::SweepWindow(MainFrm& main, const Names& names)
    : QDialog(&main),
      main_(main),
      relay_(main.progressWindow(),
             [this](int done, int total, std::string_view text) { Counted(done, total, text); }),
      corvane_(Named<QCheckBox>("CorvaneEnabled", QStringLiteral("Corvane"))),
      unusualVolume_(Named<QCheckBox>("UnusualvolumeEnabled", QStringLiteral("Pyramiding Boxes"))),
      positiveRS_(Named<QCheckBox>("PositiveRSEnabled", QStringLiteral("+ve Relative Strength"))),
      switches_(new QHBoxLayout),
      results_(Named<QPlainTextEdit>(names.results)),
      stockCount_(Counter("StockCount")),
      stepCount_(Counter("StepCount")),
      status_(Named<QLabel>("StatusText")),
      warnsStale_(names.warnsStale) {
  setObjectName(QString::fromLatin1(names.window));
  setWindowTitle(QString::fromLatin1(names.title));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(false);
  // Opening starts one pass with the current stop loss and RS days.
  main.sweepLevels() = runs::DefaultLevels(main.config());

  results_->setReadOnly(true);
  results_->setLineWrapMode(QPlainTextEdit::NoWrap);
  results_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

  for (QCheckBox* box : {corvane_, unusualVolume_, positiveRS_}) switches_->addWidget(box);
  switches_->addStretch(1);

  auto* bottom = new QHBoxLayout;
  bottom->addWidget(stockCount_);
  bottom->addWidget(stepCount_);
  bottom->addWidget(status_);
  bottom->addStretch(1);
  for (QPushButton* button :
       {AddButton(names.run, QStringLiteral("&Run"), &SweepWindow::Run),
        AddButton("LevelCommand", QStringLiteral("&Levels"), &SweepWindow::AskStopLossLevels),
        AddButton("RSLevelsBtn", QStringLiteral("R&S Levels"), &SweepWindow::AskRsLevels),
        AddButton("saveInc", QStringLiteral("Save &Inc"), &SweepWindow::SaveInc),
        AddButton("SaveResults", QStringLiteral("&Save Results"), &SweepWindow::SaveResults)}) {
    bottom->addWidget(button);
  }

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(switches_);
  layout->addWidget(results_, 1);
  layout->addLayout(bottom);
  resize(760, 520);
  ShowStaleness();
}

QPushButton* SweepWindow::AddButton(const char* name, const QString& caption,
                                    void (SweepWindow::*command)()) {
  auto* button = Named<QPushButton>(name, caption, this);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, command);
  buttons_ << button;
  return button;
}

void SweepWindow::Run() {
  if (main_.running()) return;
  levels() = main_.sweepLevels();
  main_.Guarded([&] { passes_ = Passes(); });
  pass_ = 0;
  const runs::RunSwitches switches{corvane_->isChecked(), unusualVolume_->isChecked(),
                                   positiveRS_->isChecked()};
  ShowStaleness();  // the main window's list may have changed since the last run
  running_ = true;
  for (QPushButton* button : buttons_) button->setEnabled(false);
  main_.RunLong([&](platform::Progress&) { Sweep(switches); });
  for (QPushButton* button : buttons_) button->setEnabled(true);
  running_ = false;
  // A cancelled sweep shows what it wrote so far, like a finished one.
  ShowReport();
}

void SweepWindow::AddChoice(QWidget* choice) {
  switches_->insertWidget(switches_->count() - 1, choice);  // before the stretch
}

int SweepWindow::Passes() {
  return static_cast<int>(runs::StopLossLevels(levels()).size() * runs::RsLevels(levels()).size());
}

void SweepWindow::Counted(int done, int, std::string_view text) {
  stockCount_->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  // Every pass of the sweep walks the whole list from its first stock.
  if (done == 0) stepCount_->setText(QStringLiteral("Step %1 of %2").arg(++pass_).arg(passes_));
}

void SweepWindow::ShowStaleness() {
  if (!warnsStale_) return;
  const auto stale = runs::StalePricesWarning(main_.session(), platform::Today());
  status_->setText(stale ? QString::fromStdString(*stale) : QString());
}

void SweepWindow::ShowReport() {
  QString shown = QString::fromStdString(reportText());
  shown.remove(QLatin1Char('\r'));
  results_->setPlainText(shown);
  results_->verticalScrollBar()->setValue(results_->verticalScrollBar()->maximum());
}

void SweepWindow::AskStopLossLevels() {
  AskLevels(QStringLiteral("Enter stop loss as Start, Stop, Step in dollars e.g 1,2,0.5?"),
            &runs::ParseStopLossLevels);
}

void SweepWindow::AskRsLevels() {
  AskLevels(QStringLiteral(
                "Enter the relative strength comparison days as Start, Stop, Step e.g 5,10,2?"),
            &runs::ParseRsLevels);
}

void SweepWindow::AskLevels(const QString& prompt,
                            void (*parse)(std::string_view, runs::SweepLevels&)) {
  // Both prompts carry the stop-loss title, as users of the program know them.
  const auto answer = main_.dialogs().askText(this, QStringLiteral("Stoploss ..."), prompt);
  if (!answer) return;
  runs::SweepLevels typed = main_.sweepLevels();
  try {
    parse(answer->toStdString(), typed);
  } catch (const std::exception& e) {
    main_.dialogs().message(this, QStringLiteral("Error"),
                            QStringLiteral("%1. The levels are unchanged.").arg(e.what()),
                            Dialogs::Icon::kCritical);
    return;
  }
  main_.sweepLevels() = typed;
}

void SweepWindow::SaveInc() {
  const QString file = main_.dialogs().saveWatchList(
      this, QString::fromStdString(main_.config().IncFilePath), QString());
  if (file.isEmpty()) return;
  main_.Guarded([&] { data::WriteWatchList(file.toStdString(), listToSave()); });
}

void SweepWindow::SaveResults() {
  const QString file =
      main_.dialogs().saveReport(this, QString::fromStdString(main_.config().IncFilePath));
  if (file.isEmpty()) return;
  main_.Guarded([&] { runs::SaveReport(file.toStdString(), reportText()); });
}

void SweepWindow::reject() {
  if (running_) {
    main_.progressWindow().Cancel();
    return;
  }
  QDialog::reject();
}

void SweepWindow::closeEvent(QCloseEvent* event) {
  if (running_) {
    // The sweep is still on the stack and writes into this window's report: stop it first.
    main_.progressWindow().Cancel();
    event->ignore();
    return;
  }
  QDialog::closeEvent(event);
}

}  // namespace halvard::gui
