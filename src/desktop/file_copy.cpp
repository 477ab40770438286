#include "desktop/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QFile>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include "base/runtime_error.h"

namespace veldrin::desktop {

namespace {

class Descriptor {
 public:
  Descriptor(const QString& path, int flags)
      : Number(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC)) {}
  ~Descriptor() {
    if (Number >= 0) ::close(Number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const { return Number; }

 private:
  int Number;
};

void CopyThroughMemory(int source, const QString& sourceName, NewFile& target) {
  constexpr size_t BlockSize = 131'072;
  std::array<char, BlockSize> block;
  while (true) {
    const ssize_t count = ::read(source, block.data(), block.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) RaiseFileError(errno, sourceName);
    if (count == 0) return;
    target.Write(block.data(), count);
  }
}

// The system copies by itself where it can, some file systems without moving a byte. What it can't do goes
// through memory, from where it left off.
void CopyBytes(int source, const QString& sourceName, NewFile& target) {
  constexpr size_t atOnce = size_t{1} << 30;
  ssize_t copied = 0;
  do {
    copied = ::copy_file_range(source, nullptr, target.Descriptor(), nullptr, atOnce, 0);
  } while (copied > 0 || (copied < 0 && errno == EINTR));
  CopyThroughMemory(source, sourceName, target);
}

// A link may lead to the source itself, or anywhere: it is the link that is replaced.
void RequireReplaceable(const QString& target, const struct stat& source) {
  const QByteArray name = QFile::encodeName(target);
  struct stat former {};
  if (::lstat(name.constData(), &former) != 0) return;
  if (former.st_dev == source.st_dev && former.st_ino == source.st_ino)
    throw base::RuntimeError(base::errPermissionDenied, QStringLiteral("Permission denied: %1").arg(target));
  if (S_ISLNK(former.st_mode)) return;
  if (!S_ISREG(former.st_mode)) RaiseFileError(EISDIR, target);
  if (::access(name.constData(), W_OK) != 0) RaiseFileError(errno, target);
}

// Some file systems keep no times, or not those of others' files: the copy is whole all the same.
void KeepTime(int target, const struct stat& source) {
  const timespec times[] = {{0, UTIME_OMIT}, source.st_mtim};
  ::futimens(target, times);
}

enum class Lease { Held, Refused, Denied, Unknown };

// Nobody is given a lease on what another one writes to. It ends with the descriptor.
Lease TakeLease(int file) {
  // By which the holder is told that another one wants to write.
  static const bool isIgnored = ::signal(SIGIO, SIG_IGN) != SIG_ERR;
  if (isIgnored && ::fcntl(file, F_SETLEASE, F_RDLCK) == 0) return Lease::Held;
  if (errno == EAGAIN) return Lease::Refused;
  return errno == EACCES || errno == EPERM || errno == EBADF ? Lease::Denied : Lease::Unknown;
}

bool HasRested(const base::FileState& state) {
  constexpr qint64 nanosecondsPerMillisecond = 1'000'000;
  constexpr qint64 rest = 60'000;  // milliseconds
  const qint64 changed = state.Changed / nanosecondsPerMillisecond;
  return QDateTime::currentMSecsSinceEpoch() - changed > rest;
}

// Of what grows while it is copied the copy is a part.
void RequireFinished(int file, const QString& name, const base::FileState& before) {
  struct stat status {};
  const bool isChanged = ::fstat(file, &status) != 0 || base::StateOf(status) != before;
  const bool isWritten = !isChanged && TakeLease(file) == Lease::Refused;
  if (isChanged || isWritten)
    throw base::RuntimeError(base::errPathFileAccess,
                             QStringLiteral("Another program writes to the file: %1").arg(name));
}

std::unique_ptr<NewFile> Copy(const QString& source, const QString& target, int flags = 0,
                              base::FileState* state = nullptr) {
  // Without waiting: opening a pipe would wait for its other end.
  const Descriptor from(source, O_RDONLY | O_NONBLOCK | flags);
  if (from.Get() < 0 && errno == ELOOP)
    throw base::RuntimeError(base::errPermissionDenied, QStringLiteral("Permission denied: %1").arg(source));
  struct stat status {};
  if (from.Get() < 0 || ::fstat(from.Get(), &status) != 0 || !S_ISREG(status.st_mode))
    RaiseFileError(ENOENT, source);
  RequireReplaceable(target, status);
  if (state != nullptr) *state = base::StateOf(status);
  auto to = std::make_unique<NewFile>(target);
  CopyBytes(from.Get(), source, *to);
  if (state != nullptr) RequireFinished(from.Get(), source, *state);
  KeepTime(to->Descriptor(), status);
  to->PutInPlace();
  return to;
}

}  // namespace

void CopyFile(const QString& source, const QString& target) { Copy(source, target); }

void CopyStoredFile(const QString& source, const QString& target) { Copy(source, target, O_NOFOLLOW); }

FileCopy::FileCopy(const QString& source, const QString& target)
    : Target(target), File(Copy(source, target, 0, &TheSource)) {
  // Starts the writing to the disk, so that Flush has less to wait for.
  ::sync_file_range(File->Descriptor(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

void FileCopy::Flush() {
  if (::fsync(File->Descriptor()) != 0) RaiseFileError(errno, Target);
}

// While the lease lasts nobody else begins to write. Where the file system has none, a file that has rested
// for a while is taken for finished.
void RemoveUnchanged(const QString& path, const base::FileState& state) {
  const Descriptor file(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
  if (base::StateOf(path) != state)
    throw base::RuntimeError(base::errPathFileAccess, QStringLiteral("it was changed meanwhile"));
  const Lease lease = TakeLease(file.Get());
  const bool mayBeWritten = lease == Lease::Unknown ? !HasRested(state) : lease != Lease::Held;
  if (mayBeWritten)
    throw base::RuntimeError(base::errPathFileAccess, QStringLiteral("another program may have it open"));
  if (::unlink(QFile::encodeName(path).constData()) != 0) RaiseFileError(errno, path);
}

void SyncDirectory(const QString& directory) {
  const Descriptor opened(directory, O_RDONLY | O_DIRECTORY);
  if (opened.Get() < 0)
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(directory));
  // Some network file systems can't flush a directory and need not.
  if (::fsync(opened.Get()) != 0 && errno != EINVAL) RaiseFileError(errno, directory);
}

bool RenameToFree(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
    return true;
  if (errno == EEXIST) return false;
  if (errno != EINVAL && errno != ENOSYS) RaiseFileError(errno, from);
  // A file system without such a renaming: the name is looked up first.
  struct stat status {};
  if (::lstat(target.constData(), &status) == 0) return false;
  if (::rename(source.constData(), target.constData()) != 0) RaiseFileError(errno, from);
  return true;
}

}  // namespace veldrin::desktop
