#pragma once
// DownloaderWindow (downloadFrm, "Downloader"): downloads the price history of every symbol of
// the chosen watch lists over a date range, and carries the once-a-day scheduled download: its
// switch, its time, the date it last ran, and the download itself over the lists chosen here.

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QListWidget;
class QPushButton;
class QStatusBar;
class QTimeEdit;

namespace halvard::gui {

class MainFrm;

class DownloaderWindow : public QDialog {
  Q_OBJECT

 public:
  explicit DownloaderWindow(MainFrm& main);

  // Fills the list of watch lists from the folder again; lists chosen before stay chosen.
  void RefreshLists();
  // "&Download": each chosen list over the date range, with a message for each.
  void DownloadSelected();
  // The scheduled download: the chosen lists over the twelve months up to today, failures in
  // the event log only; then today is the date of the last download. With no list chosen it
  // says so in the status bar, downloads nothing and records nothing.
  void AutoDownload();
  static inline const QString kNoListChosen =
      QStringLiteral("No watch list is chosen for the scheduled download");

  QStringList selectedLists() const;
  QString statusText() const;

 private:
  void BuildWindow();
  // The period drop-down: the "from" date so many months before today.
  void PickPeriod(int index);
  // One list; false when the run was cancelled or failed before its answer.
  bool DownloadOne(const QString& name);
  void SetStatus(const QString& text);
  void ShowDownloadDate();

  MainFrm& main_;
  QListWidget* incList_;
  QDateEdit* fromDate_;
  QDateEdit* toDate_;
  QComboBox* autoPickList_;
  QCheckBox* existingFileCheck_;
  QCheckBox* autoDownloadEnabled_;
  QTimeEdit* downloadTime_;
  QLabel* downloadDate_;
  QStatusBar* statusBar_;
  QLabel* status_;  // the status bar's one panel
  QPushButton* downloadBtn_;
};

}  // namespace halvard::gui
