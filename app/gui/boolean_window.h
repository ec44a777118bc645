#pragma once
// BooleanWindow (BooleanFrm, "Boolean Operations"): combines two watch lists into a third by
// union, intersection or difference, and edits, browses and runs the combinations saved in
// booldb.dat of the watch-list folder. Modal; the records are saved on every change and when
// the window closes.

#include <QDialog>

#include "halvard/tools/boolean_db.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace halvard::gui {

class MainFrm;

class BooleanWindow : public QDialog {
  Q_OBJECT

 public:
  explicit BooleanWindow(MainFrm& main);

  // The buttons' commands.
  void AddRecord();
  void DeleteRecord();
  void RunRecord();
  void RunAllRecords();
  void GoLeft();
  void GoRight();

  const tools::BooleanDB& records() const { return db_; }
  QString statusText(int panel) const;

  void done(int result) override;

 private:
  void BuildWindow();
  QPushButton* AddButton(const char* name, const QString& caption,
                         void (BooleanWindow::*command)());
  // setVisuals: the record on view in the controls and the status panels. With no record on
  // view the controls keep what they hold, ready to be edited into a new record.
  void setVisuals();
  // The record as the controls show it.
  tools::SetOpRecord Edited() const;

  MainFrm& main_;
  tools::BooleanDB db_;
  bool loaded_ = false;
  QComboBox* firstList_;
  QComboBox* secondList_;
  QComboBox* operation_;
  QLineEdit* resInc_;
  QLabel* status1_;
  QLabel* status2_;
};

}  // namespace halvard::gui
