#include "boolean_window.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include "halvard/data/watch_list.h"
#include "main_frm.h"
#include "named.h"

namespace halvard::gui {
namespace {

QComboBox* DropDown(const char* name, const QStringList& entries) {
  auto* box = Named<QComboBox>(name);
  box->addItems(entries);
  return box;
}

// The last entry that equals the value without regard to case; none leaves the choice alone.
void Choose(QComboBox* box, const std::string& value) {
  const QString wanted = QString::fromStdString(value);
  for (int i = box->count() - 1; i >= 0; --i) {
    if (box->itemText(i).compare(wanted, Qt::CaseInsensitive) == 0) {
      box->setCurrentIndex(i);
      return;
    }
  }
}

}  // namespace

BooleanWindow::BooleanWindow(MainFrm& main) : QDialog(&main), main_(main) {
  setObjectName(QStringLiteral("BooleanFrm"));
  setWindowTitle(QStringLiteral("Boolean Operations"));
  setModal(true);
  QStringList lists;
  main_.Guarded([&] {
    for (const std::string& name : data::ListWatchLists(main_.config().IncFilePath)) {
      lists << QString::fromStdString(name);
    }
  });
  firstList_ = DropDown("firstList", lists);
  secondList_ = DropDown("secondList", lists);
  operation_ = DropDown("operation", {QStringLiteral("union"), QStringLiteral("intersect"),
                                      QStringLiteral("difference")});
  resInc_ = Named<QLineEdit>("resInc");
  status1_ = new QLabel;
  status2_ = new QLabel;
  BuildWindow();
  main_.Guarded([&] {
    db_.ReadFile(std::filesystem::path(main_.config().IncFilePath) / tools::kBooleanDBFileName);
    loaded_ = true;
  });
  setVisuals();
}

void BooleanWindow::BuildWindow() {
  auto* fields = new QGridLayout;
  const QString captions[] = {QStringLiteral("First Watch List"), QStringLiteral("Operation"),
                              QStringLiteral("Second Watch List"), QStringLiteral("Result File")};
  QWidget* controls[] = {firstList_, operation_, secondList_, resInc_};
  for (int column = 0; column < 4; ++column) {
    auto* caption = new QLabel(captions[column]);
    caption->setBuddy(controls[column]);
    fields->addWidget(caption, 0, column);
    fields->addWidget(controls[column], 1, column);
    fields->setColumnStretch(column, 1);
  }

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(AddButton("goLeftBtn", QStringLiteral("<"), &BooleanWindow::GoLeft));
  buttons->addWidget(AddButton("goRightBtn", QStringLiteral(">"), &BooleanWindow::GoRight));
  buttons->addStretch(1);
  buttons->addWidget(AddButton("addRecBtn", QStringLiteral("&Add"), &BooleanWindow::AddRecord));
  buttons->addWidget(
      AddButton("delRecBtn", QStringLiteral("&Delete"), &BooleanWindow::DeleteRecord));
  buttons->addWidget(AddButton("runRecBtn", QStringLiteral("&Run"), &BooleanWindow::RunRecord));
  buttons->addWidget(
      AddButton("runAllBtn", QStringLiteral("&Run All"), &BooleanWindow::RunAllRecords));

  auto* status = Named<QStatusBar>("StatusBar1");
  status->setSizeGripEnabled(false);
  status->addWidget(status1_, 1);
  status->addWidget(status2_, 1);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addLayout(buttons);
  layout->addWidget(status);
  resize(640, sizeHint().height());
}

QPushButton* BooleanWindow::AddButton(const char* name, const QString& caption,
                                      void (BooleanWindow::*command)()) {
  auto* button = Named<QPushButton>(name, caption, this);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, command);
  return button;
}

tools::SetOpRecord BooleanWindow::Edited() const {
  return {firstList_->currentText().toStdString(), operation_->currentText().toStdString(),
          secondList_->currentText().toStdString(), resInc_->text().toStdString()};
}

void BooleanWindow::setVisuals() {
  tools::SetOpRecord r = Edited();
  main_.Guarded([&] { db_.getCurrent(r.firstList, r.secondList, r.operation, r.result); });
  Choose(firstList_, r.firstList);
  Choose(secondList_, r.secondList);
  Choose(operation_, r.operation);
  resInc_->setText(QString::fromStdString(r.result));
  status1_->setText(QString::fromStdString(db_.StatusRecordText()));
  status2_->setText(QString::fromStdString(db_.StatusCountText()));
}

QString BooleanWindow::statusText(int panel) const {
  return panel == 1 ? status1_->text() : status2_->text();
}

void BooleanWindow::AddRecord() {
  if (resInc_->text().isEmpty()) return;
  const tools::SetOpRecord r = Edited();
  main_.Guarded([&] { db_.AddRecord(r.firstList, r.secondList, r.operation, r.result); });
  setVisuals();
  main_.Guarded([&] { db_.WriteFile(); });
}

void BooleanWindow::DeleteRecord() {
  db_.DeleteCurr();
  setVisuals();
  main_.Guarded([&] { db_.WriteFile(); });
}

void BooleanWindow::RunRecord() {
  main_.Guarded([&] { tools::RunCurr(main_.config().IncFilePath, Edited()); });
  main_.RefreshIncList();
}

void BooleanWindow::RunAllRecords() {
  // Each record becomes the one on view as it runs; a failing one stays on view.
  main_.Guarded([&] { tools::RunAll(main_.config().IncFilePath, db_); });
  setVisuals();
  main_.RefreshIncList();
}

void BooleanWindow::GoLeft() {
  // One step before the first record is the place to edit a new one; further is nothing more.
  if (db_.position() >= 0) db_.MoveBack();
  setVisuals();
}

void BooleanWindow::GoRight() {
  db_.MoveNext();
  setVisuals();
}

void BooleanWindow::done(int result) {
  if (loaded_) main_.Guarded([&] { db_.WriteFile(); });
  QDialog::done(result);
}

}  // namespace halvard::gui
