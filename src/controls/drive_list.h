// The list of drives: the mounted volumes that hold files of people, not those of the system's own making.
#pragma once

#include <QComboBox>
#include <functional>
#include <vector>

namespace veldrin::controls {

struct Volume {
  QString Root;  ///< the directory where it is mounted
  QString Name;  ///< its label; may be empty
};

/// The volumes of this machine at this moment, by their roots.
std::vector<Volume> MountedVolumes();

class DriveListBox : public QComboBox {
  Q_OBJECT

 public:
  using VolumeSource = std::function<std::vector<Volume>()>;
  /// The list is read from `volumes` here and again whenever it opens.
  explicit DriveListBox(QWidget* parent = nullptr, VolumeSource volumes = MountedVolumes);

  /// The root of the chosen volume. Raises 68 when that isn't ready.
  QString Drive() const;
  /// Chooses the volume that holds a path, and emits Change. Raises 68 when none does or it isn't ready.
  void SetDrive(const QString& path);
  /// The same without Change and without an error: for following a path that was chosen elsewhere.
  void ShowDrive(const QString& path);

  void showPopup() override;

 Q_SIGNALS:
  /// A volume was chosen, perhaps the same one again.
  void Change();

 private:
  void Reload();
  int VolumeOf(const QString& path) const;

  VolumeSource Volumes;
};

}  // namespace veldrin::controls
