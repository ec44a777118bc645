#pragma once
// ProgressWindow (msgboxFrm): the small window of long runs. It shows what is being done and how
// far the run is, and its Cancel button asks the run to stop between two stocks. Each step lets
// the event loop run, so the main window keeps painting while a run goes on.

#include <QDialog>
#include <atomic>

#include "halvard/platform/progress.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace halvard::gui {

class ProgressWindow : public QDialog, public platform::Progress {
  Q_OBJECT

 public:
  explicit ProgressWindow(QWidget* parent = nullptr);

  // Shown without blocking; the label reads prefix, symbol and suffix joined.
  void showMessage(const QString& symbol, const QString& prefix, const QString& suffix);

  // A new run: nothing cancelled, no count yet.
  void Start();
  // What the Cancel button does: the run stops before its next stock.
  void Cancel();

  // Closing the window or Escape cancels the run as well.
  void reject() override;

  void Step(int done, int total, std::string_view text) override;
  bool Cancelled() const override { return cancelled_; }

  QString labelText() const;
  QString barText() const;  // how far the run is, in percent

 private:
  QLabel* label_;
  QProgressBar* bar_;
  QPushButton* cancel_;
  // Read by runs on a worker thread as well (a download's request and retry wait).
  std::atomic<bool> cancelled_ = false;
};

}  // namespace halvard::gui
