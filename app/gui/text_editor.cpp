#include "text_editor.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

namespace halvard::gui {

QString OpenInTextEditor(const QString& file,
                         const std::function<bool(const QString& file)>& openWithDesktop) {
  const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  QStringList tried;
  for (const QString& variable : {QStringLiteral("VISUAL"), QStringLiteral("EDITOR")}) {
    const QString command = environment.value(variable).trimmed();
    if (command.isEmpty()) continue;
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty()) continue;
    const QString program = words.takeFirst();
    // The path is one argument, never through a shell, so spaces and quotes in it stay intact.
    if (QProcess::startDetached(program, words << file)) return {};
    tried << QStringLiteral("$%1 (\"%2\") did not start").arg(variable, command);
  }
  if (openWithDesktop(file)) return {};
  tried << QStringLiteral("the desktop has no program for it");
  if (!environment.contains(QStringLiteral("VISUAL")) &&
      !environment.contains(QStringLiteral("EDITOR"))) {
    tried.prepend(QStringLiteral("neither $VISUAL nor $EDITOR is set"));
  }
  return QStringLiteral(
             "Could not open %1 in a text editor: %2. Set VISUAL or EDITOR to the "
             "editor to use.")
      .arg(file, tried.join(QStringLiteral("; ")));
}

}  // namespace halvard::gui
