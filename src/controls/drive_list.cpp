#include "controls/drive_list.h"

#include <gio/gunixmounts.h>

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <set>

#include "base/runtime_error.h"
#include "controls/display_name.h"

namespace veldrin::controls {

namespace {

[[noreturn]] void RaiseUnavailable(const QString& path) {
  throw base::RuntimeError(base::errDeviceUnavailable, QStringLiteral("Device unavailable: %1").arg(path));
}

bool IsReady(const QString& root) { return QFileInfo(root).isDir(); }

QString WithSeparator(const QString& directory) {
  return directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
}

bool IsBelow(const QString& path, const QString& directory) {
  return WithSeparator(path).startsWith(WithSeparator(directory));
}

// What the system mounts for itself and for the session, and the images that programs are packed in.
bool IsSystemsOwn(GUnixMountEntry* mount, const QString& root) {
  const char* type = g_unix_mount_get_fs_type(mount);
  // An encrypted directory is somebody's own.
  if (qstrcmp(type, "ecryptfs") == 0) return false;
  if (g_unix_is_system_fs_type(type) != FALSE || qstrcmp(type, "squashfs") == 0) return true;
  const auto isBelow = [&](const char* place) { return IsBelow(root, QLatin1String(place)); };
  // Disks of the user's are mounted below /run on some systems.
  return isBelow("/dev") || isBelow("/proc") || isBelow("/sys") ||
         (isBelow("/run") && !isBelow("/run/media"));
}

// What holds the user's own directory always is a volume. A single file can be mounted too and is none.
bool HoldsFilesOfPeople(GUnixMountEntry* mount, const QString& root) {
  return IsBelow(QDir::homePath(), root) || (!IsSystemsOwn(mount, root) && QFileInfo(root).isDir());
}

// Its label.
QString NameOf(const QString& root) {
  const QString name = QStorageInfo(root).name();
  return name == root ? QString() : name;
}

}  // namespace

std::vector<Volume> MountedVolumes() {
  std::set<QString> roots{QStringLiteral("/")};
  GList* mounts = g_unix_mounts_get(nullptr);
  for (const GList* entry = mounts; entry != nullptr; entry = entry->next) {
    auto* mount = static_cast<GUnixMountEntry*>(entry->data);
    const QString root = QFile::decodeName(g_unix_mount_get_mount_path(mount));
    if (HoldsFilesOfPeople(mount, root)) roots.insert(root);
  }
  g_list_free_full(mounts, reinterpret_cast<GDestroyNotify>(g_unix_mount_free));
  std::vector<Volume> volumes;
  volumes.reserve(roots.size());
  for (const QString& root : roots) volumes.push_back({root, NameOf(root)});
  return volumes;
}

DriveListBox::DriveListBox(QWidget* parent, VolumeSource volumes)
    : QComboBox(parent), Volumes(std::move(volumes)) {
  Reload();
  // `activated` comes for the volume that is chosen already, too: that is the way back to its root.
  connect(this, &QComboBox::activated, this, &DriveListBox::Change);
}

QString DriveListBox::Drive() const {
  QString root = currentData().toString();
  if (root.isEmpty() || !IsReady(root)) RaiseUnavailable(root);
  return root;
}

void DriveListBox::SetDrive(const QString& path) {
  Reload();
  const int volume = VolumeOf(path);
  if (volume < 0 || !IsReady(itemData(volume).toString())) RaiseUnavailable(path);
  setCurrentIndex(volume);
  Q_EMIT Change();
}

void DriveListBox::ShowDrive(const QString& path) {
  if (const int volume = VolumeOf(path); volume >= 0) setCurrentIndex(volume);
}

void DriveListBox::showPopup() {
  Reload();
  QComboBox::showPopup();
}

void DriveListBox::Reload() {
  const QSignalBlocker quiet(this);
  const QString chosen = currentData().toString();
  clear();
  const QIcon icon = QIcon::fromTheme(QStringLiteral("drive-harddisk"));
  for (const Volume& volume : Volumes()) {
    const QString root = DisplayName(volume.Root);
    addItem(icon,
            volume.Name.isEmpty() ? root : QStringLiteral("%1  [%2]").arg(root, DisplayName(volume.Name)),
            volume.Root);
  }
  if (!chosen.isEmpty()) setCurrentIndex(findData(chosen));
}

int DriveListBox::VolumeOf(const QString& path) const {
  const QString place = WithSeparator(QDir::cleanPath(QDir(path).absolutePath()));
  int best = -1;
  for (int i = 0; i < count(); ++i) {
    const QString root = itemData(i).toString();
    if (!place.startsWith(WithSeparator(root))) continue;
    if (best < 0 || root.size() > itemData(best).toString().size()) best = i;
  }
  return best;
}

}  // namespace veldrin::controls
