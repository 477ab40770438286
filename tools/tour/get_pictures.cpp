// The picture of the dialog that copies photos out of the catalogue.
#include <QDir>

#include "desktop/file_copy.h"
#include "output/get_dialog.h"
#include "tour/tour.h"

namespace veldrin::tour {

void TakeGetPictures(Tour& tour) {
  const QString images = tour.Paths().ImageDir;
  QString lastGetDir = tour.Photographs();
  controls::LongWork work(tour.Window());
  output::frmGet dialog(tour.Paths(), lastGetDir, work, &tour.Window(), desktop::CopyStoredFile);
  dialog.List1().addItems(QDir(images).entryList(QDir::Files).mid(0, 12));
  tour.SaveModal("17-get", [&dialog] { dialog.exec(); });
}

}  // namespace veldrin::tour
