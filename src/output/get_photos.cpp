#include "output/get_photos.h"

#include "platform/failure.h"

namespace veldrin::output {

void PhotoGetter::GetPhotos() {
  if (Data1.RecordCount() == 0) return;
  platform::TrapWithBox(&Window, [this] {
    frmGet dialog(ThePaths.ImageDir, LastGetDir, &Window, Copy);
    dialog.List1().addItems(ChosenNames());
    dialog.exec();
  });
}

// A record that can't be read leaves the list of records as it was.
QStringList PhotoGetter::ChosenNames() {
  if (!SelectionCounts(Data1, Views)) return {StoredName(Data1)};
  const int count = Data1.SelBookmarks.Count();
  QStringList names;
  names.reserve(count);
  const int bookmark = Data1.Bookmark();
  try {
    VisitSelected(Data1, count, [&] { names << StoredName(Data1); });
  } catch (const platform::RuntimeError&) {
    Data1.SetBookmark(bookmark);
    Data1.SuppressReposition = false;
    throw;
  }
  return names;
}

}  // namespace veldrin::output
