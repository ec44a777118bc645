#pragma once
// MainFrm: the main window and its whole command surface. It owns the session (settings, lists,
// the shown symbol, the chart), starts the program up, and turns list selections, menu commands
// and single key presses into calls on the library; everything it shows comes from the session.

#include <QMainWindow>
#include <QPointer>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "halvard/platform/event_log.h"
#include "halvard/platform/progress.h"
#include "halvard/runs/session.h"
#include "halvard/runs/sweep.h"
#include "halvard/settings/services.h"
#include "typed_number.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QPlainTextEdit;
class QTabWidget;

namespace halvard::runs {
struct ScanCommand;
}

namespace halvard::gui {

class BacktestWindow;
class ChartWidget;
class Dialogs;
class DownloaderWindow;
class DownloadTimer;
class ProgressWindow;
class SweepWindow;

class MainFrm : public QMainWindow {
  Q_OBJECT

 public:
  // What the command line may set for one run; empty means the usual.
  struct StartOptions {
    std::filesystem::path configFile;    // else the default settings file
    std::string stockDir;                // replaces StockFilePath for this run
    std::string listDir;                 // replaces IncFilePath for this run
    std::filesystem::path samplesDir;    // filled into default folders that do not exist yet
    std::filesystem::path eventLogFile;  // else the default debug.log
  };

  MainFrm(const StartOptions& options, Dialogs& dialogs, QWidget* parent = nullptr);
  ~MainFrm() override;

  runs::Session& session() { return *session_; }
  // Other windows read and change the settings through the main window.
  settings::Config& config() { return session_->config; }
  platform::EventLog& eventLog() { return eventLog_; }
  DownloadTimer& downloadTimer() { return *downloadTimer_; }
  ProgressWindow& progressWindow() { return *progress_; }
  BacktestWindow& backtestWindow() { return *backtestWindow_; }
  Dialogs& dialogs() { return dialogs_; }
  // The stop-loss and RS-days levels the live trading and batch windows share.
  runs::SweepLevels& sweepLevels() { return sweepLevels_; }

  // The secondary windows. The downloader is made once and kept, hidden when closed, so the
  // lists chosen in it stay chosen for the scheduled download; the two sweep windows delete
  // themselves when closed, so opening one again starts afresh; the boolean operations window
  // is modal.
  DownloaderWindow& OpenDownloader();
  // With no symbol in the list these do nothing and return null.
  SweepWindow* OpenLiveTrading();
  SweepWindow* OpenBatchTest();
  void OpenBooleanOperations();
  // The screener, modal; the list of watch lists is refreshed when it closes.
  void OpenScreener();
  // The newest day's daily reports (every list's, from the reports folder) in a text window,
  // or a message saying there is none.
  void ShowTodaysReport();
  // The download timer found the scheduled download due.
  void ScheduledDownload();

  void showMessage(const QString& symbol, const QString& prefix, const QString& suffix);
  // Draws the chart when it is ready (else the label over a cleared surface) and fills the
  // status bar.
  void ShowView();
  // Draws the series in memory as a run over a list left it, without computing anything.
  void ShowLoaded();
  void RefreshIncList();
  // Called after every keyboard change of a trading setting; deliberately does nothing.
  void UpdateLights() {}

  // One typed character, as the keyboard table has it. Only lower-case letters are commands.
  void KeyCommand(QChar key);
  // The options dialog, modal.
  void OpenOptions();

  // True while a long run (scan, tool) holds the window.
  bool running() const { return running_; }

  // Runs a long loop with the progress window, the other run commands disabled meanwhile.
  // Returns true when it ran to its end (not cancelled, no error); false at once when another
  // run holds the window.
  bool RunLong(const std::function<void(platform::Progress&)>& run);
  // The same with run on a worker thread (see RunAside), for runs that wait on the network: the
  // windows keep painting and the progress window's Cancel reaches a running request or wait at
  // once. run's steps go to shown (the progress window when null) on this thread; run must not
  // touch a widget, nor anything this thread reads while it runs.
  bool RunLongAside(const std::function<void(platform::Progress&)>& run,
                    platform::Progress* shown = nullptr);
  // Runs a command, showing any error of the library in a message box titled "Error".
  void Guarded(const std::function<void()>& command);
  // Asks for the SEC's contact when the chosen company-data source needs one and none is set,
  // and keeps it in the settings file; false when the user cancelled.
  bool AskForContactIfNeeded(settings::ServiceSettings& services);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  // What RunLong and RunLongAside share: the other commands disabled, the progress window shown.
  bool HoldWindowFor(const std::function<void()>& run);
  void BuildWindow();
  void BuildMenus();
  void AddTools(QMenu* tools);
  void StartUp(const StartOptions& options);
  void SizeFromSettings();

  void SelectIncList(int index);
  void SelectSymbol(int row);
  void FillHotList();
  void ShowInformation(const std::string& symbol);
  // The hot-list cursor one row on (or back), wrapping; loads that row's price file.
  void StepHotList(int delta);
  void SetView(int view);

  // Key commands that ask something.
  void AskRSDays();
  void AskUnusualVolume();
  void AskBuyMode();
  void AskStopLoss();
  void AskFilter();
  void JumpTo();
  // Turns a switch over and says so: "NAME Status", "NAME Enabled" or "NAME Disabled".
  void Toggle(bool& on, const QString& name);
  void BacktestCurrent(bool signalMode);
  void EditCurrent();
  std::optional<QString> Ask(const QString& title, const QString& prompt);
  // The "Error" box, as Guarded shows an error.
  void Refuse(const QString& message);
  // A number asked for at a prompt, read as a setting of type T is (int16_t or double); nothing
  // when the prompt was cancelled or the answer refused (then with a message saying that `what`
  // is unchanged).
  template <class T>
  std::optional<T> AskNumber(const QString& title, const QString& prompt, const QString& what);

  void RunScan(const runs::ScanCommand& command);
  // Shows a sweep window (made afresh unless it is open), when the list has a symbol to run.
  SweepWindow* OpenSweep(QPointer<SweepWindow>& window, SweepWindow* (*make)(MainFrm&));
  void CloseSecondaryWindows();

  // "q" and close write the settings; Exit does not.
  void EndProgram(bool writeSettings);

  Dialogs& dialogs_;
  platform::FileEventLog eventLog_;
  std::unique_ptr<runs::Session> session_;

  QComboBox* IncListBox_ = nullptr;
  QListWidget* HotList_ = nullptr;
  QTabWidget* stockInfo_ = nullptr;
  ChartWidget* StockGraph_ = nullptr;
  QLineEdit* Exchange_ = nullptr;
  QLineEdit* industry_ = nullptr;
  QPlainTextEdit* stockSummary_ = nullptr;
  QLineEdit* EPSRank_ = nullptr;
  QLineEdit* RSRank_ = nullptr;
  QLabel* companyName_ = nullptr;
  QLabel* statusTitle_ = nullptr;  // status bar panel 1: the view and the symbol
  QLabel* statusText_ = nullptr;   // panel 2: the newest day and the newest box
  DownloadTimer* downloadTimer_ = nullptr;
  ProgressWindow* progress_ = nullptr;
  BacktestWindow* backtestWindow_ = nullptr;
  DownloaderWindow* downloader_ = nullptr;
  QPointer<SweepWindow> liveTrading_;
  QPointer<SweepWindow> batchTest_;
  runs::SweepLevels sweepLevels_;

  bool running_ = false;
  bool closeAfterRun_ = false;
  bool writeOnClose_ = true;
  bool askedForDownloadLists_ = false;
  bool listJustSelected_ = false;  // the list box changed its entry in this event
};

}  // namespace halvard::gui
