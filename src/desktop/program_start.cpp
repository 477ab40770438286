#include "desktop/program_start.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "base/runtime_error.h"

namespace veldrin::desktop {

namespace {

// The path of the executable file that a name stands for; empty when there is none.
QString ExecutableOf(const QString& name) {
  if (!name.contains(QLatin1Char('/'))) return QStandardPaths::findExecutable(name);
  const QFileInfo file(name);
  return file.isFile() && file.isExecutable() ? file.absoluteFilePath() : QString();
}

}  // namespace

void Shell(const QString& commandLine) {
  const QString line = commandLine.trimmed();
  for (qsizetype end = 0; end >= 0 && end < line.size();) {
    end = line.indexOf(QLatin1Char(' '), end + 1);
    const QString program = ExecutableOf(end < 0 ? line : line.left(end));
    if (program.isEmpty()) continue;
    const QString argument = end < 0 ? QString() : line.mid(end).trimmed();
    if (QProcess::startDetached(program, argument.isEmpty() ? QStringList() : QStringList(argument))) return;
    break;
  }
  throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(commandLine));
}

}  // namespace veldrin::desktop
