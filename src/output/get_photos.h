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
              QWidget& window, controls::LongWork& work, base::TellWork tell,
              frmGet::CopyFunction copy = desktop::CopyStoredFile)
      : Chosen(std::move(chosen)),
        Engine(engine),
        ThePaths(paths),
        Window(window),
        Work(work),
        Tell(std::move(tell)),
        Copy(std::move(copy)) {}

  /// Shows frmGet with the stored images of the chosen records, and tells what was copied. An error before
  /// that shows a box.
  void GetPhotos();

 private:
  catalogue::Chooser Chosen;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  QWidget& Window;
  controls::LongWork& Work;
  base::TellWork Tell;
  frmGet::CopyFunction Copy;
  QString LastGetDir;
};

}  // namespace veldrin::output
