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
  PhotoGetter(catalogue::Chooser chosen, engine::DBEngine& engine, const catalogue::Paths& paths,
              QWidget& window, frmGet::CopyFunction copy = desktop::CopyFile)
      : Chosen(std::move(chosen)), Engine(engine), ThePaths(paths), Window(window), Copy(std::move(copy)) {}

  /// Shows frmGet with the stored images of the chosen records. An error before that shows a box.
  void GetPhotos();

 private:
  catalogue::Chooser Chosen;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  QWidget& Window;
  frmGet::CopyFunction Copy;
  QString LastGetDir;
};

}  // namespace veldrin::output
