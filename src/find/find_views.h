// What the query and the search ask of the main window.
#pragma once

namespace veldrin::find {

class FindViews {
 public:
  virtual ~FindViews() = default;
  /// The list was read anew or stands on another record: the view that shows it draws its current record.
  virtual void ShowFolderRecords() = 0;
  /// Stops a picture show that runs in the window, and its music, while a dialog is open.
  virtual void SuspendShow() = 0;
  /// Lets go on what SuspendShow stopped, where the show is still the view.
  virtual void ResumeShow() = 0;
};

}  // namespace veldrin::find
