#pragma once
// ScreenerWindow ("Screener"): picks stocks by the screener's criteria and saves them as a watch
// list. One control per criterion of the screener's tables, so a criterion added there shows up
// here; the query the screener service would be sent is shown as the criteria are typed. The
// screen runs with the service of [Services] Screener Host or on the local data, through the main
// window's progress window. Modal; the main window refreshes its lists when it closes.

#include <QDialog>
#include <optional>
#include <vector>

#include "halvard/screener/criteria.h"
#include "halvard/screener/screen_result.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace halvard::gui {

class MainFrm;

class ScreenerWindow : public QDialog {
  Q_OBJECT

 public:
  explicit ScreenerWindow(MainFrm& main);

  // The buttons' commands. Run refuses a number field that holds no number and runs nothing;
  // a cancelled screen shows what it found so far.
  void Run();
  void SaveList();

  // What the controls hold, as the screener gets it.
  const screener::ScreenCriteria& criteria() const { return criteria_; }
  const screener::ScreenResult& result() const { return result_; }

  // Not while a screen runs: its Cancel is in the progress window.
  void reject() override;

 private:
  // One end of a range and the field that edits it.
  struct NumberField {
    QLineEdit* edit;
    std::optional<double> screener::Bounds::*end;
    screener::Bounds screener::ScreenCriteria::*range;
    QString what;  // "The least share price", for the refusal
  };

  void BuildWindow();
  QLineEdit* AddNumberField(const QString& name, std::optional<double> screener::Bounds::*end,
                            screener::Bounds screener::ScreenCriteria::*range, const QString& what);
  // Takes the field's number into the criteria. A text that is no number is refused: the
  // criteria stay as they are, the field shows them again and a message says why.
  bool ReadNumber(const NumberField& field);
  bool ReadEveryNumber();
  // The query of the criteria with the numbers as they are being typed.
  void ShowQuery();
  void ShowResult();

  MainFrm& main_;
  screener::ScreenCriteria criteria_;
  screener::ScreenResult result_;
  bool hasResult_ = false;
  std::vector<NumberField> numbers_;
  QString host_;  // [Services] Screener Host as the window opened

  QCheckBox* localData_;
  QLabel* hostNote_;
  QLineEdit* query_;
  QPushButton* run_;
  QLabel* found_;
  QListWidget* symbols_;
  QLabel* notes_;
  QLineEdit* listName_;
  QPushButton* save_;
  QLabel* saved_;
};

}  // namespace halvard::gui
