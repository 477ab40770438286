#include "folders/change_boxes.h"

#include "catalogue/chosen_photos.h"
#include "controls/msg_box.h"

namespace veldrin::folders {

namespace {

void Tell(QWidget* window, const QString& text) {
  controls::MsgBox(window, text, controls::vbExclamation, QStringLiteral("Error"));
}

}  // namespace

void TellFolderChanged(QWidget* window) {
  Tell(window, QStringLiteral("The folder was changed by another machine."));
}

void TellPhotosChanged(QWidget* window, const std::vector<int>& photos) {
  if (!photos.empty()) Tell(window, catalogue::ChangedPhotosText(photos));
}

}  // namespace veldrin::folders
