#include "shell/app.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cstdlib>
#include <utility>

#include "base/runtime_error.h"
#include "desktop/own_directory.h"

namespace veldrin::shell {

namespace {

// Where `make install` puts the ready-made files, seen from the directory of the executable.
QString InstalledFiles() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/veldrin");
}

// Of the user's session, which nobody else may enter; empty where there is none.
QString RuntimeDirectory() {
  const QByteArray path = qgetenv("XDG_RUNTIME_DIR");
  struct stat status {};
  const bool isOwn = path.startsWith('/') && ::stat(path.constData(), &status) == 0 &&
                     S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
                     (status.st_mode & (S_IRWXG | S_IRWXO)) == 0 && ::access(path.constData(), W_OK) == 0;
  return isOwn ? QFile::decodeName(path) : QString();
}

void MakeOwnDirectory(const QString& directory) {
  const QByteArray name = QFile::encodeName(directory);
  ::mkdir(name.constData(), 0700);
  desktop::RequireOwnDirectory(directory);
  ::chmod(name.constData(), 0700);
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

// Whether the help pages of one directory are older than those of another.
bool IsOlder(const QString& help, const QString& other) {
  const auto date = [](const QString& path) {
    return QFileInfo(path + QStringLiteral("/welcome.htm")).lastModified();
  };
  return date(help) < date(other);
}

// A lock is stale when its process is gone, whatever its age. One that doesn't tell its process was cut short
// with the machine, unless a start is just about to write it.
bool IsHeld(QLockFile& lock) {
  constexpr qint64 writing = 5;  // seconds
  lock.setStaleLockTime(0);
  if (lock.tryLock() || lock.error() != QLockFile::LockFailedError) return false;
  qint64 process = 0;
  QString host;
  QString name;
  const QDateTime date = QFileInfo(lock.fileName()).lastModified();
  if (lock.getLockInfo(&process, &host, &name) ||
      std::abs(date.secsTo(QDateTime::currentDateTime())) < writing)
    return true;
  return !lock.removeStaleLockFile() || !lock.tryLock();
}

}  // namespace

// The project's version, from the build.
const int App::Major = VELDRIN_MAJOR;
const int App::Minor = VELDRIN_MINOR;
const int App::Revision = VELDRIN_REVISION;

App::App() {
  const QString name = QStringLiteral("veldrin-%1").arg(::getuid());
  for (const QString& place : {RuntimeDirectory(), QDir::tempPath()})
    if (!place.isEmpty()) TempDirs << desktop::OwnDirectoryBelow(place, name);
  const QString own = QCoreApplication::applicationDirPath();
  if (QFileInfo(own + QStringLiteral("/Database")).isDir()) {
    ThePath = own;
    return;
  }
  ThePath = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) + QStringLiteral("/Veldrin");
  ReadyMadePath = QDir::cleanPath(InstalledFiles());
}

App::App(QString path, const QString& tempDir) : ThePath(std::move(path)), TempDirs(tempDir) {}

App::~App() = default;

QString App::VersionText() { return QStringLiteral("Version %1.%2.%3").arg(Major).arg(Minor).arg(Revision); }

bool App::PrevInstance() {
  for (const QString& directory : TempDirs) {
    try {
      MakeOwnDirectory(directory);
    } catch (const base::RuntimeError&) {
      continue;  // The start reports the unusable directory when it needs it.
    }
    auto lock = std::make_unique<QLockFile>(directory + QStringLiteral("/instance.lock"));
    if (IsHeld(*lock)) {
      Locks.clear();
      return true;
    }
    Locks.push_back(std::move(lock));
  }
  return false;
}

void App::MakeTempDir() const { MakeOwnDirectory(TempDir()); }

void App::FillPath() const {
  if (ReadyMadePath.isEmpty()) return;
  for (const char* name : {"Database", "help"}) {
    const QString source = ReadyMadePath + QLatin1Char('/') + QLatin1String(name);
    const QString target = ThePath + QLatin1Char('/') + QLatin1String(name);
    // Only a catalogue that was never there is made: an empty one in the place of one that went astray would
    // hand out the numbers of its photos again. The help pages hold nothing of the user's and follow the
    // program.
    const bool isHelp = qstrcmp(name, "help") == 0;
    const bool isThere = QFileInfo::exists(target) && !(isHelp && IsOlder(target, source));
    if (isThere || !QFileInfo::exists(source)) continue;
    // A copy cut short by a crash or a full disk must not pass for the whole at the next start.
    const QString part = target + QStringLiteral(".part");
    QDir(part).removeRecursively();
    const bool copied = CopyTree(source, part);
    if (copied && isHelp) QDir(target).removeRecursively();
    if (!copied || !QDir().rename(part, target)) {
      QDir(part).removeRecursively();
      throw base::RuntimeError(base::errPathFileAccess,
                               QStringLiteral("Path/File access error: %1").arg(target));
    }
  }
  QDir().mkpath(ThePath + QStringLiteral("/Ini"));
}

}  // namespace veldrin::shell
