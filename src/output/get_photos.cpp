#include "output/get_photos.h"

#include "controls/error_box.h"

namespace veldrin::output {

void PhotoGetter::GetPhotos() {
  const catalogue::Choice choice = Chosen();
  if (choice.Photos.empty()) return;
  controls::TrapWithBox(&Window, [&] {
    QStringList names;
    for (const auto& photo : TakePhotos(*Engine.OpenDatabase(ThePaths.WorkFile), choice, Window))
      names << StoredName(photo);
    if (names.isEmpty()) return;
    frmGet dialog(ThePaths.ImageDir, LastGetDir, &Window, Copy);
    dialog.List1().addItems(names);
    dialog.exec();
  });
}

}  // namespace veldrin::output
