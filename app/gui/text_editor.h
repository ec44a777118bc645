#pragma once
// Opening a watch list in the user's text editor: $VISUAL, then $EDITOR (each a command that may
// carry its own arguments), then the program the desktop has for the file.

#include <QString>
#include <functional>

namespace halvard::gui {

// Starts the first editor that starts, without waiting for it. Returns an empty text when one
// started, else a message saying why none could. openWithDesktop hands the file to the
// desktop's own program and says whether the desktop took it.
QString OpenInTextEditor(const QString& file,
                         const std::function<bool(const QString& file)>& openWithDesktop);

}  // namespace halvard::gui
