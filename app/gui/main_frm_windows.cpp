// The secondary windows the main window opens, and the scheduled download its timer starts.

#include "batch_window.h"
#include "boolean_window.h"
#include "downloader_window.h"
#include "halvard/data/download_schedule.h"
#include "main_frm.h"
#include "report_window.h"

namespace halvard::gui {

DownloaderWindow& MainFrm::OpenDownloader() {
  if (downloader_ == nullptr) downloader_ = new DownloaderWindow(*this);
  downloader_->RefreshLists();
  downloader_->show();
  downloader_->raise();
  return *downloader_;
}

SweepWindow* MainFrm::OpenSweep(QPointer<SweepWindow>& window, SweepWindow* (*make)(MainFrm&)) {
  if (session_->symbols.empty()) return nullptr;
  // A window that is open comes to the front as it is; a closed one is gone (it deletes itself),
  // so opening again starts afresh with an empty report and the current settings' levels.
  if (window == nullptr) window = make(*this);
  window->show();
  window->raise();
  return window;
}

SweepWindow* MainFrm::OpenLiveTrading() {
  return OpenSweep(liveTrading_, &NewLiveWindow);
}

SweepWindow* MainFrm::OpenBatchTest() {
  return OpenSweep(batchTest_, &NewBatchWindow);
}

void MainFrm::OpenBooleanOperations() {
  BooleanWindow window(*this);
  window.exec();
}

void MainFrm::CloseSecondaryWindows() {
  if (downloader_ != nullptr) downloader_->close();
  if (liveTrading_ != nullptr) liveTrading_->close();
  if (batchTest_ != nullptr) batchTest_->close();
}

void MainFrm::ScheduledDownload() {
  // With no list chosen the download stays due: the downloader opens once a run to say so,
  // not on every tick.
  if (data::ChosenDownloadLists(config()).empty()) {
    if (askedForDownloadLists_) return;
    askedForDownloadLists_ = true;
  }
  OpenDownloader().AutoDownload();
}

}  // namespace halvard::gui
