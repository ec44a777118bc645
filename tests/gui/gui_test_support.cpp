#include "gui_test_support.h"

#include <QDir>
#include <QFile>

namespace halvard::gui::testing {
namespace {

void CopyFolder(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QString& name : QDir(from).entryList(QDir::Files)) {
    QFile::copy(from + "/" + name, to + "/" + name);
  }
}

void WriteText(const QString& path, const QString& text) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
}

}  // namespace

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
  WriteText(settingsFile(), text);
}

void Workspace::writeList(const QString& name, const QString& text) const {
  WriteText(lists() + "/" + name, text);
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

}  // namespace halvard::gui::testing
