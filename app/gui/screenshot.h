#pragma once
// The picture mode of halvard-gui: start as usual, choose a list and a view, and save a picture
// of the main window (or of the options dialog on one of its pages) instead of waiting for a
// user. Used for the README's pictures and for checks on a machine without a display.

#include <QString>
#include <optional>

namespace halvard::gui {

class MainFrm;

struct ScreenshotRequest {
  QString file;             // the PNG to write
  QString list;             // a watch list to select (NAME or NAME.inc); empty keeps the first
  std::optional<int> view;  // 1 to 5; else the stored view
  std::optional<int> optionsPage;  // 1 to 3: a picture of the options dialog on that page
};

// Sets the window up as asked and writes the picture; false (with the reason in error) when
// the list is missing or the file cannot be written.
bool TakeScreenshot(MainFrm& window, const ScreenshotRequest& request, QString& error);

}  // namespace halvard::gui
