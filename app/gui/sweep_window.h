#pragma once
// SweepWindow: what the live trading and batch test windows share. Three switches for the
// engine, the report box that grows run after run until the window closes, the stock and step
// counters, the two levels prompts and the two saves. Each window runs its own report over the
// main window's list, with the main window's progress window and its Cancel.

#include <QDialog>
#include <string>
#include <string_view>

#include "halvard/runs/report_text.h"
#include "halvard/runs/sweep.h"
#include "progress_relay.h"

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace halvard::gui {

class MainFrm;

class SweepWindow : public QDialog {
  Q_OBJECT

 public:
  bool running() const { return running_; }

  // The buttons' commands.
  void Run();                // "&Run": the sweep with the switches as checked
  void AskStopLossLevels();  // "&Levels"
  void AskRsLevels();
  void SaveInc();      // "Save &Inc": the report's list as a watch list
  void SaveResults();  // "&Save Results": the report as a text file

  // Escape and the close button wait for a run to stop: they cancel it first.
  void reject() override;

 protected:
  struct Names {
    const char* window;  // the window's object name
    const char* title;
    const char* results;      // the report box
    const char* run;          // the "&Run" button
    bool warnsStale = false;  // the status says when the list's prices are old (the live report)
  };
  SweepWindow(MainFrm& main, const Names& names);

  // The window's own report: its sweep, its levels, its text and the list "Save &Inc" writes.
  virtual void Sweep(const runs::RunSwitches& switches) = 0;
  virtual runs::SweepLevels& levels() = 0;
  virtual const std::string& reportText() const = 0;
  virtual const std::string& listToSave() const = 0;

  // What the report reports its progress to.
  platform::Progress& progress() { return relay_; }

  // A window's own choice, shown after the three switches.
  void AddChoice(QWidget* choice);
  // How many times the next run walks the list (the step counter's total): by default once
  // per level combination.
  virtual int Passes();

  void closeEvent(QCloseEvent* event) override;

 private:
  QPushButton* AddButton(const char* name, const QString& caption, void (SweepWindow::*command)());
  void AskLevels(const QString& prompt, void (*parse)(std::string_view, runs::SweepLevels&));
  void Counted(int done, int total, std::string_view text);
  void ShowReport();
  void ShowStaleness();

  MainFrm& main_;
  ProgressRelay relay_;
  QCheckBox* corvane_;
  QCheckBox* unusualVolume_;
  QCheckBox* positiveRS_;
  QHBoxLayout* switches_;
  QPlainTextEdit* results_;
  QLabel* stockCount_;
  QLabel* stepCount_;
  QLabel* status_;
  bool warnsStale_;
  QList<QPushButton*> buttons_;
  int pass_ = 0;
  int passes_ = 0;
  bool running_ = false;
};

}  // namespace halvard::gui
