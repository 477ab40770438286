#include "output/mail_program.h"

#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <optional>

#include "desktop/default_program.h"
#include "desktop/file_copy.h"

namespace veldrin::output {

namespace {

QString Mailer() { return QStandardPaths::findExecutable(QStringLiteral("xdg-email")); }

// Its exit codes, but for 0.
enum MailerExit : int { mailerMissingFile = 2, mailerNoTool = 3, mailerUnreadableFile = 5 };

void RequireReadable(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile())
    throw base::RuntimeError(mapAttachmentNotFound, QStringLiteral("Attachment not found: %1").arg(path));
  if (!file.isReadable())
    throw base::RuntimeError(mapAttachmentOpenFailure,
                             QStringLiteral("Attachment can't be opened: %1").arg(path));
}

// The mailer follows links and gives the file the name that it finds there. It also takes a backslash for the
// beginning of a sign of its own, and parts the names of files by commas for one mail program.
bool ComesThrough(const MailFile& file) {
  const QFileInfo real(QFileInfo(file.Path).canonicalFilePath());
  const QString path = real.filePath();
  return real.fileName() == file.Name && std::none_of(path.begin(), path.end(), [](QChar character) {
           return character == QLatin1Char(',') || character == QLatin1Char('\\') ||
                  character.category() == QChar::Other_Control;
         });
}

// A message may be open for long, but not for days.
void RemoveOldCopies(const QString& tempDir) {
  const auto directories = QDir(tempDir).entryInfoList({QStringLiteral("mail-*")}, QDir::Dirs);
  for (const QFileInfo& directory : directories) {
    if (directory.lastModified().daysTo(QDateTime::currentDateTime()) > 1)
      QDir(directory.filePath()).removeRecursively();
  }
}

QStringList Arguments(const QString& body, const std::vector<MailFile>& files, const QString& tempDir) {
  QStringList arguments{QStringLiteral("--utf8"), QStringLiteral("--body"), body};
  std::optional<QTemporaryDir> copies;
  for (const MailFile& file : files) {
    QString path = file.Path;
    if (!ComesThrough(file)) {
      if (!copies) {
        RemoveOldCopies(tempDir);
        copies.emplace(tempDir + QStringLiteral("mail-XXXXXX"));
        if (!copies->isValid()) throw base::RuntimeError(mapFailure, copies->errorString());
      }
      path = copies->filePath(file.Name);
      desktop::CopyFile(file.Path, path);
    }
    arguments << QStringLiteral("--attach") << path;
  }
  if (copies) copies->setAutoRemove(false);
  return arguments;
}

// An empty variable means nothing to programs, but only one that is there is passed on when the mailer sets
// it, as it must to take the bytes of a path one by one.
QProcessEnvironment MailerEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  const QString locale = QStringLiteral("LC_ALL");
  if (!environment.contains(locale)) environment.insert(locale, QString());
  return environment;
}

[[noreturn]] void RaiseFailure(int exitCode) {
  switch (exitCode) {
    case mailerMissingFile:
      throw base::RuntimeError(mapAttachmentNotFound, QStringLiteral("Attachment not found."));
    case mailerUnreadableFile:
      throw base::RuntimeError(mapAttachmentOpenFailure, QStringLiteral("Attachment can't be opened."));
    case mailerNoTool:
      throw base::RuntimeError(mapFailure, QStringLiteral("No mail program could be started."));
    default:
      throw base::RuntimeError(mapFailure,
                               QStringLiteral("The mail program failed to open the message (exit code "
                                              "%1).")
                                   .arg(exitCode));
  }
}

// The mail program outlives this one: it has a session and outputs of its own, and nothing owns the process
// but its end.
QProcess* StartMailer(const QStringList& arguments) {
  auto* process = new QProcess;
  process->setProgram(Mailer());
  process->setArguments(arguments);
  process->setProcessEnvironment(MailerEnvironment());
  process->setStandardInputFile(QProcess::nullDevice());
  process->setStandardOutputFile(QProcess::nullDevice());
  process->setStandardErrorFile(QProcess::nullDevice());
  process->setChildProcessModifier([] { ::setsid(); });
  process->start();
  return process;
}

}  // namespace

void RequireMailProgram() {
  if (Mailer().isEmpty())
    throw base::RuntimeError(mapLoginFail, QStringLiteral("Login failed: xdg-email is not installed."));
  // What the mailer would rather ask than the desktop.
  if (qEnvironmentVariableIsSet("MAILER") ||
      !QStandardPaths::findExecutable(QStringLiteral("xdg-email-hook.sh")).isEmpty())
    return;
  if (desktop::GetSchemeClass(QStringLiteral("mailto")).isEmpty())
    throw base::RuntimeError(mapLoginFail, QStringLiteral("Login failed: no mail program is set up."));
}

void ComposeMail(const QString& body, const std::vector<MailFile>& files, const QString& tempDir) {
  for (const MailFile& file : files) RequireReadable(file.Path);
  QProcess* process = StartMailer(Arguments(body, files, tempDir));
  QEventLoop wait;
  QTimer patience;
  patience.setSingleShot(true);
  QObject::connect(process, &QProcess::stateChanged, &wait, &QEventLoop::quit);
  QObject::connect(&patience, &QTimer::timeout, &wait, &QEventLoop::quit);
  patience.start(LaunchSeconds * 1000);
  while (process->state() != QProcess::NotRunning && patience.isActive())
    wait.exec(QEventLoop::ExcludeUserInputEvents);
  if (process->state() != QProcess::NotRunning) {
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    return;
  }
  const bool started = process->error() != QProcess::FailedToStart;
  const int exitCode = process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1;
  delete process;
  if (!started) RaiseFailure(mailerNoTool);
  if (exitCode != 0) RaiseFailure(exitCode);
}

}  // namespace veldrin::output
