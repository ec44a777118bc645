#pragma once
// What the window tests share: dialogs that answer from a script and remember what was shown,
// and a private copy of the bundled samples with its own settings file, so no test touches the
// user's settings or the source tree.

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "dialogs.h"
#include "halvard/settings/config.h"
#include "main_frm.h"

namespace halvard::gui::testing {

class FakeDialogs : public Dialogs {
 public:
  struct Shown {
    QString title, text;
    Icon icon;
  };

  // The answers the next prompts get, in order; a null QString, or none left, cancels.
  std::deque<QString> answers;
  QString saveAnswer;    // the file chosen in the save dialog (empty: cancelled)
  QString reportAnswer;  // the file chosen in the report save dialog (empty: cancelled)
  QString folderAnswer;  // the folder picked (empty: cancelled)

  std::vector<Shown> messages;
  std::vector<QString> prompts;        // "title / prompt"
  std::vector<QString> proposedSaves;  // "folder / proposed name"
  std::vector<QString> reportFolders;  // where the report save dialog opened

  void message(QWidget*, const QString& title, const QString& text, Icon icon) override {
    messages.push_back({title, text, icon});
  }
  std::optional<QString> askText(QWidget*, const QString& title, const QString& prompt) override {
    prompts.push_back(title + " / " + prompt);
    if (answers.empty()) return std::nullopt;
    const QString answer = answers.front();
    answers.pop_front();
    if (answer.isNull()) return std::nullopt;
    return std::make_optional(answer);
  }
  QString saveWatchList(QWidget*, const QString& folder, const QString& proposed) override {
    proposedSaves.push_back(folder + " / " + proposed);
    return saveAnswer;
  }
  QString saveReport(QWidget*, const QString& folder) override {
    reportFolders.push_back(folder);
    return reportAnswer;
  }
  QString pickFolder(QWidget*, const QString&, const QString&) override { return folderAnswer; }
  bool openWithDesktop(const QString& file) override {
    desktopOpened.push_back(file);
    return desktopTakes;
  }
  bool desktopTakes = false;           // whether the desktop has a program for the file
  std::vector<QString> desktopOpened;  // the files handed to the desktop
};

// Every setting as "Section/Value Name=text", to compare two states of the settings.
inline QStringList SettingLines(const settings::Config& config) {
  QStringList lines;
  for (const settings::SettingText& s : settings::SettingsAsText(config)) {
    lines << QString::fromStdString(s.section + "/" + s.name + "=" + s.text);
  }
  return lines;
}

class Workspace {
 public:
  // A copy of the bundled price files and watch lists (or two empty folders).
  explicit Workspace(bool withSamples = true);

  QString stocks() const { return dir_.filePath(QStringLiteral("data")); }
  QString lists() const { return dir_.filePath(QStringLiteral("watchlists")); }
  QString settingsFile() const { return dir_.filePath(QStringLiteral("settings.ini")); }
  QString settingsText() const;
  void writeSettings(const QString& text) const;
  void writeList(const QString& name, const QString& text) const;
  // A price file of the stock folder, written as given (no check that it loads).
  void writePrices(const QString& symbol, const QByteArray& text) const;

  MainFrm::StartOptions start() const;
  std::unique_ptr<MainFrm> open(Dialogs& dialogs) const;

 private:
  QTemporaryDir dir_;
};

// A price file the loader refuses at its line 2, and what it says of it as XLNX.txt (the sample
// list's last symbol).
inline const QByteArray kRefusedPrices =
    "Date,Open,High,Low,Close,Volume\r\n2017-12-29,1,two,0.5,1.5,100\r\n";
inline const QString kXlnxRefused =
    QStringLiteral("XLNX.txt line 2: the high \"two\" is not a number");

// A main window on a fresh copy of the samples, with the dialogs it talks to: where most window
// tests start. The watch lists given (name, text) and the settings file's text, when given, are
// written before the window opens; withSamples false opens it on two empty folders. A test that
// prepares its workspace otherwise opens the window itself.
struct Opened {
  using Lists = std::initializer_list<std::pair<QString, QString>>;
  explicit Opened(const Lists& lists = {}, const QString& settings = {});
  explicit Opened(bool withSamples);
  Workspace ws;
  FakeDialogs dialogs;
  std::unique_ptr<MainFrm> w;
};

// A file's text, or "(no file)" when it cannot be read, so an empty file and a missing one differ;
// its bytes (none when it cannot be read); a file written as given.
QString FileText(const QString& path);
QByteArray FileBytes(const QString& path);
void WriteBytes(const QString& path, const QByteArray& bytes);

// Clicks the named push button of a window; triggers the named menu entry of the main window.
void Click(QWidget& window, const char* button);
void Trigger(MainFrm& w, const char* action);

}  // namespace halvard::gui::testing
