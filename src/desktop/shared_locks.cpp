#include "desktop/shared_locks.h"

#include <fcntl.h>
#include <gio/gunixmounts.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

namespace veldrin::desktop {

namespace {

// Far behind all bytes of a catalogue, and none that a database's own locks use.
constexpr off_t TriedByte = off_t{1} << 46;

class OpenedFile {
 public:
  explicit OpenedFile(const QString& file)
      : Descriptor(::open(QFile::encodeName(file).constData(), O_RDWR | O_CLOEXEC)) {}
  ~OpenedFile() {
    if (Descriptor >= 0) ::close(Descriptor);
  }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;

  bool IsOpen() const { return Descriptor >= 0; }

  /// The number of the error; 0 when the lock was had. Such a lock is the descriptor's: another one of the
  /// same process meets it.
  int TryLock() const {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = TriedByte;
    lock.l_len = 1;
    return ::fcntl(Descriptor, F_OFD_SETLK, &lock) == 0 ? 0 : errno;
  }

 private:
  int Descriptor;
};

bool IsHeldByAnother(int error) { return error == EAGAIN || error == EACCES; }

QString WhyTrialFails(const QString& file) {
  const OpenedFile first(file);
  const OpenedFile second(file);
  // Who may not write it needs no lock.
  if (!first.IsOpen() || !second.IsOpen()) return {};
  const int had = first.TryLock();
  // Another program's trial is met: that it is met is what was to be known.
  if (IsHeldByAnother(had)) return {};
  if (had != 0) return QStringLiteral("a lock can't be had: ") + QString::fromLocal8Bit(std::strerror(had));
  if (IsHeldByAnother(second.TryLock())) return {};
  return QStringLiteral("two programs can have the same lock at once");
}

}  // namespace

MountLocks LocksOf(const QString& type, const QString& options) {
  static const QStringList networks = {
      QStringLiteral("nfs"),  QStringLiteral("nfs4"),  QStringLiteral("cifs"),
      QStringLiteral("smb3"), QStringLiteral("smbfs"), QStringLiteral("9p"),
      QStringLiteral("afs"),  QStringLiteral("ceph"),  QStringLiteral("fuse")};
  static const QStringList local = {QStringLiteral("nolock"), QStringLiteral("nobrl"),
                                    QStringLiteral("local_lock=all"), QStringLiteral("local_lock=posix")};
  MountLocks locks;
  locks.MustBeTried = networks.contains(type) || type.startsWith(QLatin1String("fuse."));
  if (!locks.MustBeTried) return locks;
  const QStringList given = options.split(QLatin1Char(','));
  const auto found =
      std::ranges::find_if(local, [&](const QString& option) { return given.contains(option); });
  if (found != local.end()) locks.StayHere = *found;
  return locks;
}

QString WhyLocksFail(const QString& file) {
  const QByteArray path = QFile::encodeName(QFileInfo(file).canonicalFilePath());
  if (path.isEmpty()) return {};
  const std::unique_ptr<GUnixMountEntry, void (*)(GUnixMountEntry*)> mount(
      g_unix_mount_for(path.constData(), nullptr), g_unix_mount_free);
  if (!mount) return {};
  const QString type = QString::fromUtf8(g_unix_mount_get_fs_type(mount.get()));
  const MountLocks locks = LocksOf(type, QString::fromUtf8(g_unix_mount_get_options(mount.get())));
  if (!locks.MustBeTried) return {};
  const QString where =
      QStringLiteral(" (%1 on %2)").arg(type, QFile::decodeName(g_unix_mount_get_mount_path(mount.get())));
  if (!locks.StayHere.isEmpty())
    return QStringLiteral("it is mounted with '%1', which keeps locks on this machine").arg(locks.StayHere) +
           where;
  const QString why = WhyTrialFails(file);
  return why.isEmpty() ? QString() : why + where;
}

}  // namespace veldrin::desktop
