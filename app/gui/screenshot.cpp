#include "screenshot.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QPixmap>
#include <QTabWidget>

#include "dialogs.h"
#include "main_frm.h"
#include "options_dialog.h"

namespace halvard::gui {
namespace {

// Lets layouts, resizes and the redraws they cause settle before the picture is taken.
void Settle() {
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

}  // namespace

bool TakeScreenshot(MainFrm& window, const ScreenshotRequest& request, QString& error) {
  window.show();
  Settle();
  if (!request.list.isEmpty()) {
    auto* lists = window.findChild<QComboBox*>(QStringLiteral("IncListBox"));
    QString entry = request.list;
    if (!entry.endsWith(QStringLiteral(".inc"), Qt::CaseInsensitive)) entry += ".inc";
    const int index = lists->findText(entry, Qt::MatchFixedString);
    if (index < 0) {
      error = QStringLiteral("no watch list %1 in %2")
                  .arg(entry, QString::fromStdString(window.config().IncFilePath));
      return false;
    }
    lists->setCurrentIndex(index);
  }
  if (request.view) {
    window.config().currentView = static_cast<int16_t>(*request.view);
    window.ShowView();
  }
  Settle();
  QPixmap picture;
  if (request.optionsPage) {
    QuietDialogs quiet;
    OptionsDialog dialog(
        window.config(), [] {}, quiet, &window);
    dialog.tabs()->setCurrentIndex(*request.optionsPage - 1);
    dialog.show();
    Settle();
    picture = dialog.grab();
  } else {
    picture = window.grab();
  }
  if (!picture.save(request.file, "PNG")) {
    error = QStringLiteral("cannot write %1").arg(request.file);
    return false;
  }
  return true;
}

}  // namespace halvard::gui
