// Photos handed to an outside program, which changes the stored files themselves, and what comes back of
// them.
#pragma once

#include "catalogue/paths.h"
#include "catalogue/record_list.h"
#include "engine/dao/database.h"

namespace veldrin::browse {

class ExternalViewer {
 public:
  /// The references must outlive the object; `window` has the message box.
  ExternalViewer(catalogue::RecordList& data1, engine::DBEngine& engine, const catalogue::Paths& paths,
                 QWidget& window)
      : Data1(data1), Engine(engine), ThePaths(paths), Window(window) {}

  /// Opens the current record's stored image in the program that the desktop has for its type, and notes that
  /// it may change. Without a stored image nothing happens; without a program a box tells how to get one.
  void ViewBttn_Click();

 private:
  void ShowNoProgram() const;

  catalogue::RecordList& Data1;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  QWidget& Window;
};

/// Notes the photo's date, so that RefreshCheckedPhoto finds a change. The first note of a photo stays.
/// Passes over every error.
void RecordCheckPhoto(engine::Database& database, int photoId, const QString& imageType,
                      const QDateTime& lastModifyDate);

/// Compares the stored file of a photo with the note that was written when it was handed out, if there is
/// one. Where the file's date differs, the thumbnail goes, so that it is made anew, and the photo's row takes
/// the file's date. The note goes, unless that couldn't be written. Passes over every error; false when the
/// note stays.
bool RefreshCheckedPhoto(engine::Database& database, const catalogue::Paths& paths, int photoId);

}  // namespace veldrin::browse
