// halvard-gui: the desktop program of Halvard 600.
//
//   halvard-gui [--config FILE] [--stock-dir DIR] [--list-dir DIR]
//               [--screenshot FILE.png [--list NAME] [--view 1-5] [--options-page 1-3]
//                                      [--window downloader|live|batch|boolean|
//                                                screener]]

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <memory>

#include "dialogs.h"
#include "halvard/platform/samples_folder.h"
#include "halvard/platform/version.h"
#include "main_frm.h"
#include "screenshot.h"

namespace {

using halvard::gui::kScreenshotWindows;
using halvard::gui::MainFrm;

int UsageError(const QString& message) {
  std::fprintf(stderr, "halvard-gui: usage error: %s\n", qPrintable(message));
  return 2;
}

// A whole number from low to high, or nothing.
std::optional<int> Number(const QString& text, int low, int high) {
  bool ok = false;
  const int n = text.toInt(&ok);
  if (!ok || n < low || n > high) return std::nullopt;
  return n;
}

// True when the arguments only ask for text (the help, the version): that needs no display, so
// no window system is opened for it and it works over ssh or in a script.
bool OnlyText(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const QByteArray arg(argv[i]);
    if (arg == "--") break;
    for (const char* option : {"-h", "-?", "--help", "--help-all", "-v", "--version"}) {
      if (arg == option) return true;
    }
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  const std::unique_ptr<QCoreApplication> application =
      OnlyText(argc, argv) ? std::make_unique<QCoreApplication>(argc, argv)
                           : std::make_unique<QApplication>(argc, argv);
  QCoreApplication& app = *application;
  QCoreApplication::setApplicationName(QStringLiteral("Halvard 600"));

  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Halvard 600: boxes, breakouts and buy signals from daily price files"));
  parser.addHelpOption();
  // Not addVersionOption(): the text is the command line's, with the commit on a second line.
  const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                   QStringLiteral("Print the version and exit"));
  const QCommandLineOption config(QStringLiteral("config"), QStringLiteral("The settings file"),
                                  QStringLiteral("FILE"));
  const QCommandLineOption stockDir(QStringLiteral("stock-dir"),
                                    QStringLiteral("The folder of the price files, for this run"),
                                    QStringLiteral("DIR"));
  const QCommandLineOption listDir(QStringLiteral("list-dir"),
                                   QStringLiteral("The folder of the watch lists, for this run"),
                                   QStringLiteral("DIR"));
  const QCommandLineOption screenshot(
      QStringLiteral("screenshot"),
      QStringLiteral("Save a picture of the main window as FILE.png and exit"),
      QStringLiteral("FILE.png"));
  const QCommandLineOption list(QStringLiteral("list"),
                                QStringLiteral("With --screenshot: the watch list to show"),
                                QStringLiteral("NAME"));
  const QCommandLineOption view(
      QStringLiteral("view"),
      QStringLiteral("With --screenshot: 1 five days, 2 one month, 3 three months, 4 six "
                     "months, 5 one year"),
      QStringLiteral("1-5"));
  const QCommandLineOption optionsPage(
      QStringLiteral("options-page"),
      QStringLiteral("With --screenshot: a picture of the options dialog on this page"),
      QStringLiteral("1-4"));
  const QCommandLineOption secondary(
      QStringLiteral("window"),
      QStringLiteral("With --screenshot: a picture of this window instead of the main window"),
      kScreenshotWindows.join(u'|'));
  parser.addOptions(
      {version, config, stockDir, listDir, screenshot, list, view, optionsPage, secondary});
  parser.process(app);  // the help is printed here, and the program ends
  if (parser.isSet(version)) {
    std::fputs(halvard::platform::VersionText("halvard-gui").c_str(), stdout);
    return 0;
  }
  if (qobject_cast<QApplication*>(&app) == nullptr) return 0;

  halvard::gui::ScreenshotRequest request;
  const bool picture = parser.isSet(screenshot);
  if (!picture && (parser.isSet(list) || parser.isSet(view) || parser.isSet(optionsPage) ||
                   parser.isSet(secondary))) {
    return UsageError(
        QStringLiteral("--list, --view, --options-page and --window go with --screenshot"));
  }
  if (picture) {
    request.file = parser.value(screenshot);
    request.list = parser.value(list);
    if (parser.isSet(view)) {
      request.view = Number(parser.value(view), 1, 5);
      if (!request.view) return UsageError(QStringLiteral("--view takes 1 to 5"));
    }
    if (parser.isSet(optionsPage)) {
      request.optionsPage = Number(parser.value(optionsPage), 1, 4);
      if (!request.optionsPage) return UsageError(QStringLiteral("--options-page takes 1 to 4"));
    }
    if (parser.isSet(secondary)) {
      request.window = parser.value(secondary);
      if (!kScreenshotWindows.contains(request.window)) {
        return UsageError(QStringLiteral("--window takes ") + kScreenshotWindows.join(", "));
      }
      if (request.optionsPage) {
        return UsageError(QStringLiteral("--options-page and --window are two pictures; give one"));
      }
    }
  }

  MainFrm::StartOptions start;
  start.configFile = parser.value(config).toStdString();
  start.stockDir = parser.value(stockDir).toStdString();
  start.listDir = parser.value(listDir).toStdString();
  start.samplesDir =
      halvard::platform::FindSamplesFolder({HALVARD_INSTALLED_SAMPLES, HALVARD_SOURCE_SAMPLES});

  if (picture) {
    // Nobody is at the keyboard: messages go to stderr and the settings stay as they were.
    halvard::gui::QuietDialogs quiet;
    MainFrm window(start, quiet);
    QString error;
    if (!halvard::gui::TakeScreenshot(window, request, error)) {
      std::fprintf(stderr, "halvard-gui: error: %s\n", qPrintable(error));
      return 1;
    }
    for (const QString& text : halvard::gui::WindowTexts(window)) {
      std::printf("%s\n", text.toUtf8().constData());
    }
    return 0;
  }

  halvard::gui::QtDialogs dialogs;
  MainFrm window(start, dialogs);
  window.show();
  return QApplication::exec();
}
