// The command that hands photos to the user's mail program.
#pragma once

#include <QWidget>

#include "catalogue/paths.h"
#include "output/mapi.h"
#include "output/record_choice.h"

namespace veldrin::output {

constexpr int MaxAttachments = 10;

class PhotoMail {
 public:
  /// The references must outlive the object; `window` has the message boxes.
  PhotoMail(catalogue::RecordList& data1, const catalogue::Paths& paths, const OutputViews& views,
            QWidget& window)
      : Data1(data1), ThePaths(paths), Views(views), Window(window), MAPIMess(paths) {}

  /// Opens a new message with the stored images of the chosen records, of which the first MaxAttachments go
  /// along; the user finishes it. An error shows a box, and leaves the session open for the next message.
  void SendPhotos();

 private:
  void AttachSelected();
  void AttachCurrent();

  catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  const OutputViews& Views;
  QWidget& Window;
  MapiSession MAPISess;
  MapiMessages MAPIMess;
};

}  // namespace veldrin::output
