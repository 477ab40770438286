#include "output/get_photos.h"

#include "controls/error_box.h"

namespace veldrin::output {

void PhotoGetter::GetPhotos() {
  if (Data1.RecordCount() == 0) return;
  controls::TrapWithBox(&Window, [this] {
    frmGet dialog(ThePaths.ImageDir, LastGetDir, &Window, Copy);
    dialog.List1().addItems(ChosenNames());
    dialog.exec();
  });
}

QStringList PhotoGetter::ChosenNames() {
  if (!SelectionCounts(Data1, Views)) return {StoredName(Data1)};
  const int count = Data1.SelBookmarks.Count();
  QStringList names;
  names.reserve(count);
  const ListWalk walk(Data1);
  for (int i = 0; i < count; ++i) {
    Data1.SetBookmark(Data1.SelBookmarks[i]);
    names << StoredName(Data1);
  }
  return names;
}

}  // namespace veldrin::output
