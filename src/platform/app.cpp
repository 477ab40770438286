#include "platform/app.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "platform/runtime_error.h"

namespace veldrin::platform {

namespace {

// Where `make install` puts the ready-made files, seen from the directory of the executable.
QString InstalledFiles() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/veldrin");
}

// False when a file or a directory could not be made.
bool CopyTree(const QString& from, const QString& to) {
  bool whole = QDir().mkpath(to);
  QDirIterator entries(from, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    const QString source = entries.next();
    const QString target = to + QLatin1Char('/') + QDir(from).relativeFilePath(source);
    if (entries.fileInfo().isDir()) {
      whole &= QDir().mkpath(target);
    } else {
      whole &= QDir().mkpath(QFileInfo(target).path()) && QFile::copy(source, target) &&
               QFile::setPermissions(target, QFile::permissions(target) | QFileDevice::WriteOwner);
    }
  }
  return whole;
}

}  // namespace

App::App() : TheTempDir(QDir::tempPath() + QStringLiteral("/veldrin-%1").arg(::getuid())) {
  const QString own = QCoreApplication::applicationDirPath();
  if (QFileInfo(own + QStringLiteral("/Database")).isDir()) {
    ThePath = own;
    return;
  }
  ThePath = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) + QStringLiteral("/Veldrin");
  ReadyMadePath = QDir::cleanPath(InstalledFiles());
}

App::App(QString path, QString tempDir) : ThePath(std::move(path)), TheTempDir(std::move(tempDir)) {}

App::~App() = default;

QString App::VersionText() { return QStringLiteral("Version %1.%2.%3").arg(Major).arg(Minor).arg(Revision); }

bool App::PrevInstance() {
  try {
    MakeTempDir();
  } catch (const RuntimeError&) {
    return false;  // The start reports the unusable directory when it needs it.
  }
  Lock = std::make_unique<QLockFile>(TheTempDir + QStringLiteral("/instance.lock"));
  // A lock is stale when its process is gone, whatever its age.
  Lock->setStaleLockTime(0);
  return !Lock->tryLock() && Lock->error() == QLockFile::LockFailedError;
}

void App::MakeTempDir() const {
  const QByteArray name = QFile::encodeName(TheTempDir);
  ::mkdir(name.constData(), 0700);
  struct stat status {};
  // lstat: a link that someone else put there is refused like any other strange thing.
  if (::lstat(name.constData(), &status) != 0) {
    throw RuntimeError(errPathNotFound, QStringLiteral("Path not found: %1").arg(TheTempDir));
  }
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::getuid()) {
    throw RuntimeError(errPermissionDenied, QStringLiteral("Permission denied: %1").arg(TheTempDir));
  }
  ::chmod(name.constData(), 0700);
}

void App::FillPath() const {
  if (ReadyMadePath.isEmpty()) return;
  for (const char* name : {"Database", "help"}) {
    const QString source = ReadyMadePath + QLatin1Char('/') + QLatin1String(name);
    const QString target = ThePath + QLatin1Char('/') + QLatin1String(name);
    // Only a directory that was never there is filled: an empty catalogue in the place of one that went
    // astray would hand out the numbers of its photos again.
    if (QFileInfo::exists(target) || !QFileInfo::exists(source)) continue;
    // A copy cut short by a crash or a full disk must not pass for the whole at the next start.
    const QString part = target + QStringLiteral(".part");
    QDir(part).removeRecursively();
    if (!CopyTree(source, part) || !QDir().rename(part, target)) {
      QDir(part).removeRecursively();
      throw RuntimeError(errPathFileAccess, QStringLiteral("Path/File access error: %1").arg(target));
    }
  }
  QDir().mkpath(ThePath + QStringLiteral("/Ini"));
}

}  // namespace veldrin::platform
