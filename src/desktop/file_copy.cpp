#include "desktop/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "base/runtime_error.h"

namespace veldrin::desktop {

namespace {

[[noreturn]] void Raise(int error, const QString& path) {
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    throw base::RuntimeError(base::errDiskFull, QStringLiteral("Disk full: %1").arg(path));
  }
  if (error == ENOENT)
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(path));
  throw base::RuntimeError(base::errPathFileAccess, QStringLiteral("Path/File access error: %1").arg(path));
}

class Descriptor {
 public:
  Descriptor(const QString& path, int flags)
      : Number(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666)) {}
  ~Descriptor() {
    if (Number >= 0) ::close(Number);
  }
  Descriptor(Descriptor&& other) noexcept : Number(other.Release()) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const { return Number; }
  int Release() { return std::exchange(Number, -1); }

 private:
  int Number;
};

void WriteAll(int target, const char* bytes, ssize_t count, const QString& path) {
  while (count > 0) {
    const ssize_t written = ::write(target, bytes, static_cast<size_t>(count));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) Raise(errno, path);
    bytes += written;
    count -= written;
  }
}

void CopyThroughMemory(int source, const QString& sourceName, int target, const QString& targetName) {
  constexpr size_t BlockSize = 131'072;
  std::array<char, BlockSize> block;
  while (true) {
    const ssize_t count = ::read(source, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Raise(errno, sourceName);
    if (count == 0) return;
    WriteAll(target, block.data(), count, targetName);
  }
}

// The system copies by itself where it can, some file systems without moving a byte. What it can't do goes
// through memory, from where it left off.
void CopyBytes(int source, const QString& sourceName, int target, const QString& targetName) {
  constexpr size_t atOnce = size_t{1} << 30;
  ssize_t copied = 0;
  do {
    copied = ::copy_file_range(source, nullptr, target, nullptr, atOnce, 0);
  } while (copied > 0 || (copied < 0 && errno == EINTR));
  CopyThroughMemory(source, sourceName, target, targetName);
}

constexpr int NewFile = O_WRONLY | O_CREAT | O_EXCL;

// A link may lead to the source itself, or anywhere: it is the link that is replaced.
void RequireReplaceable(const QString& target, const struct stat& source) {
  const QByteArray name = QFile::encodeName(target);
  struct stat former {};
  if (::lstat(name.constData(), &former) != 0) Raise(errno, target);
  if (former.st_dev == source.st_dev && former.st_ino == source.st_ino)
    throw base::RuntimeError(base::errPermissionDenied, QStringLiteral("Permission denied: %1").arg(target));
  if (S_ISLNK(former.st_mode)) return;
  if (!S_ISREG(former.st_mode)) Raise(EISDIR, target);
  if (::access(name.constData(), W_OK) != 0) Raise(errno, target);
}

// A new file for what is to stand under the target's name: of that name where it is free, otherwise beside
// it, so that the former file is there until the new one is whole.
Descriptor OpenNew(const QString& target, const struct stat& source, QString& written) {
  written = target;
  Descriptor file(written, NewFile);
  if (file.Get() >= 0) return file;
  if (errno == ENOENT || errno == ENOTDIR)
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(target));
  if (errno != EEXIST) Raise(errno, target);
  RequireReplaceable(target, source);
  for (int number = 1;; ++number) {
    written = target + QStringLiteral(".part%1").arg(number);
    Descriptor beside(written, NewFile);
    if (beside.Get() >= 0) return beside;
    if (errno != EEXIST) Raise(errno, target);
  }
}

Descriptor Copy(const QString& source, const QString& target) {
  // Without waiting: opening a pipe would wait for its other end.
  const Descriptor from(source, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (from.Get() < 0 || ::fstat(from.Get(), &status) != 0 || !S_ISREG(status.st_mode)) Raise(ENOENT, source);
  QString written;
  Descriptor to = OpenNew(target, status, written);
  try {
    CopyBytes(from.Get(), source, to.Get(), written);
    // Some file systems tell only when a file is closed that there was no room.
    if (::close(::dup(to.Get())) != 0) Raise(errno, target);
    if (written != target &&
        std::rename(QFile::encodeName(written).constData(), QFile::encodeName(target).constData()) != 0)
      Raise(errno, target);
  } catch (const base::RuntimeError&) {
    QFile::remove(written);
    throw;
  }
  return to;
}

}  // namespace

void CopyFile(const QString& source, const QString& target) { Copy(source, target); }

FileCopy::FileCopy(const QString& source, const QString& target)
    : Target(target), File(Copy(source, target).Release()) {
  // Starts the writing to the disk, so that Flush has less to wait for.
  ::sync_file_range(File, 0, 0, SYNC_FILE_RANGE_WRITE);
}

FileCopy::~FileCopy() { ::close(File); }

void FileCopy::Flush() {
  if (::fsync(File) != 0) Raise(errno, Target);
}

void SyncDirectory(const QString& directory) {
  const Descriptor opened(directory, O_RDONLY | O_DIRECTORY);
  if (opened.Get() < 0)
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(directory));
  // Some network file systems can't flush a directory and need not.
  if (::fsync(opened.Get()) != 0 && errno != EINVAL) Raise(errno, directory);
}

bool RenameToFree(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
    return true;
  if (errno == EEXIST) return false;
  if (errno != EINVAL && errno != ENOSYS) Raise(errno, from);
  // A file system without such a renaming: the name is looked up first.
  struct stat status {};
  if (::lstat(target.constData(), &status) == 0) return false;
  if (::rename(source.constData(), target.constData()) != 0) Raise(errno, from);
  return true;
}

}  // namespace veldrin::desktop
