// The command that copies photos out of the catalogue.
#pragma once

#include <QWidget>

#include "catalogue/paths.h"
#include "desktop/file_copy.h"
#include "output/get_dialog.h"
#include "output/record_choice.h"

namespace veldrin::output {

class PhotoGetter {
 public:
  /// The references must outlive the object; `window` has the dialog and the message boxes.
  PhotoGetter(catalogue::RecordList& data1, const catalogue::Paths& paths, const OutputViews& views,
              QWidget& window, frmGet::CopyFunction copy = desktop::CopyFile)
      : Data1(data1), ThePaths(paths), Views(views), Window(window), Copy(std::move(copy)) {}

  /// Shows frmGet with the stored images of the chosen records. An error before that shows a box.
  void GetPhotos();

 private:
  QStringList ChosenNames();

  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  const OutputViews& Views;
  QWidget& Window;
  frmGet::CopyFunction Copy;
  QString LastGetDir;
};

}  // namespace veldrin::output
