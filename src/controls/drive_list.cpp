#include "controls/drive_list.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSet>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <algorithm>

#include "base/runtime_error.h"
#include "controls/display_name.h"

namespace veldrin::controls {

namespace {

// File systems that the system keeps for itself, and the read-only images that programs are packed in.
bool IsSystemsOwn(const QByteArray& type) {
  static const QSet<QByteArray> own{"autofs",          "binfmt_misc", "bpf",     "cgroup",    "cgroup2",
                                    "configfs",        "debugfs",     "devpts",  "devtmpfs",  "efivarfs",
                                    "fuse.gvfsd-fuse", "fuse.portal", "fusectl", "hugetlbfs", "mqueue",
                                    "overlay",         "proc",        "pstore",  "ramfs",     "rpc_pipefs",
                                    "securityfs",      "squashfs",    "sysfs",   "tmpfs",     "tracefs"};
  return own.contains(type);
}

[[noreturn]] void RaiseUnavailable(const QString& path) {
  throw base::RuntimeError(base::errDeviceUnavailable, QStringLiteral("Device unavailable: %1").arg(path));
}

bool IsReady(const QString& root) { return QFileInfo(root).isDir(); }

QString WithSeparator(const QString& directory) {
  return directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
}

}  // namespace

std::vector<Volume> MountedVolumes() {
  std::vector<Volume> volumes;
  QSet<QString> seen;
  for (const QStorageInfo& info : QStorageInfo::mountedVolumes()) {
    const QString root = info.rootPath();
    // The root is always one; a single file can be mounted too and is none.
    const bool real =
        root == QLatin1String("/") || (!IsSystemsOwn(info.fileSystemType()) && QFileInfo(root).isDir());
    if (!real || seen.contains(root)) continue;
    seen.insert(root);
    const QString name = info.name();
    volumes.push_back({root, name == root ? QString() : name});
  }
  if (!seen.contains(QStringLiteral("/"))) volumes.push_back({QStringLiteral("/"), {}});
  std::sort(volumes.begin(), volumes.end(), [](const Volume& a, const Volume& b) { return a.Root < b.Root; });
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
