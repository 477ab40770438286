#include "controls/directory_chooser.h"

#include <QDir>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "base/failure.h"
#include "controls/msg_box.h"
#include "controls/named.h"

namespace veldrin::controls {

QString UsersPictures() {
  const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
  return QDir(pictures).isReadable() ? pictures
                                     : QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

DirectoryChooser::DirectoryChooser(QWidget* parent, DriveListBox::VolumeSource volumes)
    : QWidget(parent),
      TheDrive(Named(new DriveListBox(this, std::move(volumes)), "Drive1")),
      TheDir(Named(new DirListBox(this), "Dir1")) {
  // A volume's long label must not widen the whole chooser.
  TheDrive->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(TheDrive);
  layout->addWidget(TheDir);
  TheDrive->ShowDrive(TheDir->Path());
  connect(TheDrive, &DriveListBox::Change, this, &DirectoryChooser::Drive1_Change);
  connect(TheDir, &DirListBox::Change, this, &DirectoryChooser::Dir1_Change);
}

void DirectoryChooser::SetPath(const QString& path) {
  TheDrive->SetDrive(path);
  TheDir->SetPath(path);
}

void DirectoryChooser::Drive1_Change() {
  if (IsRestoring) return;
  const QString earlier = TheDir->Path();
  try {
    TheDir->SetPath(TheDrive->Drive());
  } catch (const base::RuntimeError& error) {
    MsgBox(this, base::ErrorCodeText(error));
    IsRestoring = true;
    base::ResumeNext([&] { TheDrive->SetDrive(earlier); });
    base::ResumeNext([&] { TheDir->SetPath(earlier); });
    IsRestoring = false;
  }
}

// A directory of another volume can be reached from directory to directory, too.
void DirectoryChooser::Dir1_Change() {
  TheDrive->ShowDrive(TheDir->Path());
  if (!IsRestoring) Q_EMIT Change();
}

}  // namespace veldrin::controls
