#include "desktop/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <cerrno>
#include <cstdio>
#include <mutex>

#include "base/runtime_error.h"
#include "desktop/own_directory.h"

namespace veldrin::desktop {

namespace {

// As many as may be on their way in a directory when a program is killed, and more.
constexpr int MostLeftovers = 16;

// Without the target's name, which may be as long as a name can be. The numbers are given from 0 on, so that
// leftovers are found without a look through the directory, which may be large.
QString PartName(const QString& directory, int number) {
  static const QString mark = OwnMark();
  return directory + QStringLiteral("/.veldrin-%1-%2.part").arg(mark).arg(number);
}

// What grows is locked by the program that makes it; its end, of whatever kind, frees the lock.
void ClearLeftover(const QString& part) {
  const QByteArray name = QFile::encodeName(part);
  const int file = ::open(name.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  struct stat status {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && ::flock(file, LOCK_EX | LOCK_NB) == 0)
    ::unlink(name.constData());
  ::close(file);
}

// Threads must not take each other's files for leftovers between the making and the locking.
std::mutex Making;

// The directories that this run has cleared; what it leaves itself it deletes itself.
QSet<QString>& Cleared() {
  static QSet<QString> cleared;
  return cleared;
}

// The negative of the error's number where that fails.
int OpenPart(const QString& directory, QString& part) {
  const std::scoped_lock alone(Making);
  if (!Cleared().contains(directory)) {
    for (int number = 0; number < MostLeftovers; ++number) ClearLeftover(PartName(directory, number));
    Cleared().insert(directory);
  }
  int file = -1;
  for (int number = 0; file < 0; ++number) {
    part = PartName(directory, number);
    file = ::open(QFile::encodeName(part).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno != EEXIST) return -errno;
  }
  ::flock(file, LOCK_EX | LOCK_NB);
  return file;
}

}  // namespace

void RaiseFileError(int error, const QString& path) {
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    throw base::RuntimeError(base::errDiskFull, QStringLiteral("Disk full: %1").arg(path));
  }
  if (error == ENOENT)
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(path));
  throw base::RuntimeError(base::errPathFileAccess, QStringLiteral("Path/File access error: %1").arg(path));
}

NewFile::NewFile(const QString& target) : Target(target), File(OpenPart(QFileInfo(target).path(), Part)) {
  if (File >= 0) return;
  if (File == -ENOENT || File == -ENOTDIR)
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(target));
  RaiseFileError(-File, target);
}

NewFile::~NewFile() {
  // A disk that has gone keeps the file; when it comes back the file is a leftover.
  if (!InPlace && !QFile::remove(Part)) {
    const std::scoped_lock alone(Making);
    Cleared().remove(QFileInfo(Target).path());
  }
  ::close(File);
}

void NewFile::Write(const char* bytes, qint64 count) {
  while (count > 0) {
    const ssize_t written = ::write(File, bytes, static_cast<size_t>(count));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) RaiseFileError(errno, Target);
    bytes += written;
    count -= written;
  }
}

void NewFile::PutInPlace() {
  // Some file systems tell only when a file is closed that there was no room.
  if (::close(::dup(File)) != 0) RaiseFileError(errno, Target);
  if (std::rename(QFile::encodeName(Part).constData(), QFile::encodeName(Target).constData()) != 0)
    RaiseFileError(errno, Target);
  InPlace = true;
}

}  // namespace veldrin::desktop
