#pragma once
// Dialogs: the message boxes, input boxes and file pickers the main window and its dialogs show.
// They sit behind an interface so a picture can be taken without anybody at the keyboard, and so
// tests can answer the prompts.

#include <QString>
#include <optional>

class QWidget;

namespace halvard::gui {

class Dialogs {
 public:
  enum class Icon { kNone, kInformation, kCritical };

  virtual ~Dialogs() = default;
  virtual void message(QWidget* parent, const QString& title, const QString& text, Icon icon) = 0;
  // What the user typed at an input box; nothing when the prompt was cancelled.
  virtual std::optional<QString> askText(QWidget* parent, const QString& title,
                                         const QString& prompt) = 0;
  // The file a watch list is saved to, proposed in folder under proposedName; empty when cancelled.
  virtual QString saveWatchList(QWidget* parent, const QString& folder,
                                const QString& proposedName) = 0;
  // The file a report is saved to: a text file, although a name typed without extension gets
  // ".inc", as users of the reports know it. Empty when cancelled.
  virtual QString saveReport(QWidget* parent, const QString& folder) = 0;
  // A folder picked under the given title; empty when cancelled.
  virtual QString pickFolder(QWidget* parent, const QString& title, const QString& start) = 0;
  // Hands a file to the program the desktop has for it; false when none took it.
  virtual bool openWithDesktop(const QString& file) = 0;
};

// The real ones: QMessageBox, QInputDialog, QFileDialog.
class QtDialogs : public Dialogs {
 public:
  void message(QWidget* parent, const QString& title, const QString& text, Icon icon) override;
  std::optional<QString> askText(QWidget* parent, const QString& title,
                                 const QString& prompt) override;
  QString saveWatchList(QWidget* parent, const QString& folder,
                        const QString& proposedName) override;
  QString saveReport(QWidget* parent, const QString& folder) override;
  QString pickFolder(QWidget* parent, const QString& title, const QString& start) override;
  bool openWithDesktop(const QString& file) override;
};

// For a run nobody watches (--screenshot): messages go to stderr, every prompt is cancelled.
class QuietDialogs : public Dialogs {
 public:
  void message(QWidget* parent, const QString& title, const QString& text, Icon icon) override;
  std::optional<QString> askText(QWidget*, const QString&, const QString&) override {
    return std::nullopt;
  }
  QString saveWatchList(QWidget*, const QString&, const QString&) override { return {}; }
  QString saveReport(QWidget*, const QString&) override { return {}; }
  QString pickFolder(QWidget*, const QString&, const QString&) override { return {}; }
  bool openWithDesktop(const QString&) override { return false; }
};

}  // namespace halvard::gui
