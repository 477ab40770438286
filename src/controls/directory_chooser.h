// The chooser of a directory: the drives above the directories of the one chosen.
#pragma once

#include <QWidget>

#include "controls/dir_list.h"
#include "controls/drive_list.h"

namespace veldrin::controls {

/// Where a chooser opens at first: the user's directory of pictures, or the user's own where there is none.
QString UsersPictures();

/// Its parts are named `Drive1` and `Dir1`. A drive that can't be opened shows a plain box "Error Code: ..."
/// and leaves drive and path as they were.
class DirectoryChooser : public QWidget {
  Q_OBJECT

 public:
  explicit DirectoryChooser(QWidget* parent = nullptr, DriveListBox::VolumeSource volumes = MountedVolumes);

  /// The two parts belong to the chooser.
  DriveListBox& Drive1() const { return *TheDrive; }
  DirListBox& Dir1() const { return *TheDir; }

  const QString& Path() const { return TheDir->Path(); }
  /// Sets the drive and the directory. Raises 68 or 76.
  void SetPath(const QString& path);

 Q_SIGNALS:
  /// Another directory is open.
  void Change();

 private:
  void Drive1_Change();
  void Dir1_Change();

  DriveListBox* TheDrive;
  DirListBox* TheDir;
  bool IsRestoring = false;
};

}  // namespace veldrin::controls
