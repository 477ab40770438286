#include "output/mail_program.h"

#include <unistd.h>

#include <QApplication>
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
#include <atomic>
#include <optional>

#include "controls/drop_input.h"
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
  // A link in the image store may lead to a file that nobody meant to send.
  if (!file.isReadable() || file.isSymLink())
    throw base::RuntimeError(mapAttachmentOpenFailure,
                             QStringLiteral("Attachment can't be opened: %1").arg(path));
}

// The mailer gives a file the name that it finds behind all links. It also takes a backslash for the
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
void RemoveOldCopies(const QString& mailDir) {
  if (!QDir::isAbsolutePath(mailDir)) return;
  const auto directories = QDir(mailDir).entryInfoList(
      {QStringLiteral("message-*")}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
  for (const QFileInfo& directory : directories) {
    if (directory.lastModified().daysTo(QDateTime::currentDateTime()) > 1)
      QDir(directory.filePath()).removeRecursively();
  }
}

using Copies = std::optional<QTemporaryDir>;

QString Copied(const MailFile& file, const QString& mailDir, Copies& copies) {
  if (!copies) {
    QDir().mkpath(mailDir);
    copies.emplace(mailDir + QStringLiteral("message-XXXXXX"));
    if (!copies->isValid()) throw base::RuntimeError(mapFailure, copies->errorString());
  }
  QString path = copies->filePath(file.Name);
  desktop::CopyStoredFile(file.Path, path);
  return path;
}

QStringList Arguments(const QString& body, const std::vector<MailFile>& files, const QString& mailDir,
                      Copies& copies, const controls::Progress& progress, std::atomic<int>& done) {
  QStringList arguments{QStringLiteral("--utf8"), QStringLiteral("--body"), body};
  for (const MailFile& file : files) {
    arguments << QStringLiteral("--attach")
              << (ComesThrough(file) ? file.Path : Copied(file, mailDir, copies));
    ++done;
    if (progress.IsStopped()) throw base::RuntimeError(mapUserAbort, QStringLiteral("The work was stopped."));
  }
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

// A mail program that takes the message at once may need longer to show it than a double click lasts, of
// which the second half would make another message.
void WaitForLaunch(QProcess& process) {
  const controls::DropInput dropped;
  QEventLoop wait;
  QTimer patience;
  QTimer doubleClick;
  QObject::connect(&process, &QProcess::stateChanged, &wait, &QEventLoop::quit);
  for (QTimer* timer : {&patience, &doubleClick}) {
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, &wait, &QEventLoop::quit);
  }
  patience.start(LaunchSeconds * 1000);
  doubleClick.start(QApplication::doubleClickInterval());
  while ((process.state() != QProcess::NotRunning && patience.isActive()) || doubleClick.isActive())
    wait.exec();
}

void Launch(const QStringList& arguments) {
  QProcess* process = StartMailer(arguments);
  WaitForLaunch(*process);
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

void ComposeMail(const QString& body, const std::vector<MailFile>& files, const QString& mailDir,
                 controls::LongWork& work) {
  for (const MailFile& file : files) RequireReadable(file.Path);
  RemoveOldCopies(mailDir);
  Copies copies;
  QStringList arguments;
  {
    controls::Progress progress(work, QStringLiteral("Copying Photos...."), static_cast<int>(files.size()));
    std::atomic<int> done = 0;
    progress.Run([&] { arguments = Arguments(body, files, mailDir, copies, progress, done); },
                 [&] { return done.load(); });
  }
  Launch(arguments);
  if (copies) copies->setAutoRemove(false);
}

}  // namespace veldrin::output
