#include "gui_test_support.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QPushButton>

namespace halvard::gui::testing {
namespace {

void CopyFolder(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QString& name : QDir(from).entryList(QDir::Files)) {
    QFile::copy(from + "/" + name, to + "/" + name);
  }
}

}  // namespace

void WriteBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(bytes);
}

Workspace::Workspace(bool withSamples) {
  if (withSamples) {
    CopyFolder(QStringLiteral(HALVARD_SAMPLES "/data"), stocks());
    CopyFolder(QStringLiteral(HALVARD_SAMPLES "/watchlists"), lists());
  } else {
    QDir().mkpath(stocks());
    QDir().mkpath(lists());
  }
}

QString Workspace::settingsText() const {
  QFile file(settingsFile());
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

void Workspace::writeSettings(const QString& text) const {
  WriteBytes(settingsFile(), text.toUtf8());
}

void Workspace::writeList(const QString& name, const QString& text) const {
  WriteBytes(lists() + "/" + name, text.toUtf8());
}

void Workspace::writePrices(const QString& symbol, const QByteArray& text) const {
  WriteBytes(stocks() + "/" + symbol + ".txt", text);
}

MainFrm::StartOptions Workspace::start() const {
  MainFrm::StartOptions options;
  options.configFile = settingsFile().toStdString();
  options.stockDir = stocks().toStdString();
  options.listDir = lists().toStdString();
  options.eventLogFile = dir_.filePath(QStringLiteral("debug.log")).toStdString();
  return options;
}

std::unique_ptr<MainFrm> Workspace::open(Dialogs& dialogs) const {
  return std::make_unique<MainFrm>(start(), dialogs);
}

Opened::Opened(const Lists& lists, const QString& settings) {
  for (const auto& [name, text] : lists) ws.writeList(name, text);
  if (!settings.isNull()) ws.writeSettings(settings);
  w = ws.open(dialogs);
}

Opened::Opened(bool withSamples) : ws(withSamples), w(ws.open(dialogs)) {}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString FileText(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                        : QStringLiteral("(no file)");
}

void Click(QWidget& window, const char* button) {
  window.findChild<QPushButton*>(QString::fromLatin1(button))->click();
}

void Trigger(MainFrm& w, const char* action) {
  w.findChild<QAction*>(QString::fromLatin1(action))->trigger();
}

}  // namespace halvard::gui::testing
