#include "screenshot.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QTabWidget>

#include "boolean_window.h"
#include "dialogs.h"
#include "downloader_window.h"
#include "main_frm.h"
#include "options_dialog.h"
#include "screener_window.h"
#include "sweep_window.h"

namespace halvard::gui {
namespace {

// Lets layouts, resizes and the redraws they cause settle before the picture is taken.
void Settle() {
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

QPixmap SecondaryWindowPicture(MainFrm& window, const QString& which, QString& error) {
  if (which == QStringLiteral("downloader")) {
    DownloaderWindow& downloader = window.OpenDownloader();
    auto* lists = downloader.findChild<QListWidget*>(QStringLiteral("incList"));
    const QString chosen =
        window.findChild<QComboBox*>(QStringLiteral("IncListBox"))->currentText();
    for (QListWidgetItem* item : lists->findItems(chosen, Qt::MatchFixedString)) {
      item->setSelected(true);
    }
    Settle();
    return downloader.grab();
  }
  if (which == QStringLiteral("screener")) {
    ScreenerWindow screener(window);
    const std::pair<const char*, const char*> typed[] = {
        {"price-min", "20"}, {"price-max", "30"}, {"market-cap-min", "1000"}};
    for (const auto& [field, text] : typed) {
      auto* edit = screener.findChild<QLineEdit*>(QString::fromLatin1(field));
      edit->setText(QString::fromLatin1(text));
    }
    screener.findChild<QLineEdit*>(QStringLiteral("listName"))->setText(QStringLiteral("cheap"));
    screener.show();
    screener.Run();
    Settle();
    return screener.grab();
  }
  if (which == QStringLiteral("boolean")) {
    BooleanWindow booleans(window);
    booleans.show();
    Settle();
    return booleans.grab();
  }
  SweepWindow* sweep =
      which == QStringLiteral("live") ? window.OpenLiveTrading() : window.OpenBatchTest();
  if (sweep == nullptr) {
    error = QStringLiteral("the watch list has no symbol to run");
    return {};
  }
  sweep->findChild<QCheckBox*>(QStringLiteral("UnusualvolumeEnabled"))->setChecked(true);
  sweep->Run();
  Settle();
  return sweep->grab();
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
    try {
      dialog.AddServicesPage(settings::ReadServiceSettings(window.session().store()),
                             [](const std::vector<settings::ServiceText>&) {});
    } catch (const std::exception&) {
      // A [Services] value that does not convert leaves the picture without that page.
    }
    dialog.tabs()->setCurrentIndex(*request.optionsPage - 1);
    dialog.show();
    Settle();
    picture = dialog.grab();
  } else if (!request.window.isEmpty()) {
    picture = SecondaryWindowPicture(window, request.window, error);
    if (picture.isNull()) return false;
  } else {
    picture = window.grab();
  }
  if (!picture.save(request.file, "PNG")) {
    error = QStringLiteral("cannot write %1").arg(request.file);
    return false;
  }
  return true;
}

QStringList WindowTexts(const MainFrm& window) {
  QStringList texts;
  for (const char* panel : {"statusPanel1", "statusPanel2"}) {
    texts << window.findChild<QLabel*>(QString::fromLatin1(panel))->text();
  }
  const auto* label = window.findChild<QLabel*>(QStringLiteral("notDownloadedError"));
  if (!label->isHidden()) texts << label->text();
  return texts;
}

}  // namespace halvard::gui
