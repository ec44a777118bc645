#pragma once
// The picture mode of halvard-gui: start as usual, choose a list and a view, and save a picture
// of the main window (or of the options dialog on one of its pages, or of a secondary window)
// instead of waiting for a user. Used for the README's pictures and for checks on a machine
// without a display.

#include <QString>
#include <QStringList>
#include <optional>

namespace halvard::gui {

class MainFrm;

struct ScreenshotRequest {
  QString file;             // the PNG to write
  QString list;             // a watch list to select (NAME or NAME.inc); empty keeps the first
  std::optional<int> view;  // 1 to 5; else the stored view
  std::optional<int> optionsPage;  // 1 to 4: a picture of the options dialog on that page
  // A picture of a secondary window: "downloader" (the list chosen), "live" or "batch" (one run
  // with "Pyramiding Boxes" checked), "boolean", "screener" (a local screen of a price range,
  // with a criterion the local data cannot answer).
  QString window;
};

// The names --window takes.
inline const QStringList kScreenshotWindows = {"downloader", "live", "batch", "boolean",
                                               "screener"};

// Sets the window up as asked and writes the picture; false (with the reason in error) when
// the list is missing or the file cannot be written.
bool TakeScreenshot(MainFrm& window, const ScreenshotRequest& request, QString& error);

// What the main window says in words: its two status-bar texts, then the "Data Not Downloaded
// Yet" label's text when the label is shown. The picture mode prints them, one a line, so
// scripts can read what the window shows.
QStringList WindowTexts(const MainFrm& window);

}  // namespace halvard::gui
