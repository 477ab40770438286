// The command that hands photos to the user's mail program.
#pragma once

#include <QWidget>

#include "base/work_report.h"
#include "catalogue/paths.h"
#include "output/mapi.h"
#include "output/record_choice.h"

namespace veldrin::output {

constexpr int MaxAttachments = 10;

class PhotoMail {
 public:
  /// The references must outlive the object; `window` has the message boxes.
  PhotoMail(catalogue::Chooser chosen, engine::DBEngine& engine, const catalogue::Paths& paths,
            QWidget& window, controls::LongWork& work, base::TellWork tell)
      : Chosen(std::move(chosen)),
        Engine(engine),
        ThePaths(paths),
        Window(window),
        Tell(std::move(tell)),
        MAPIMess(paths, work) {}

  /// Opens a new message with the stored images of the chosen records, of which the first MaxAttachments go
  /// along, and tells how many; the user finishes it. An error shows a box, and leaves the session open for
  /// the next message.
  void SendPhotos();

 private:
  void Attach(const catalogue::CheckedPhotos::Photo& photo);

  catalogue::Chooser Chosen;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  QWidget& Window;
  base::TellWork Tell;
  MapiSession MAPISess;
  MapiMessages MAPIMess;
};

}  // namespace veldrin::output
