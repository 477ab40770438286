// What the query and the search ask of the main window.
#pragma once

#include <functional>

namespace veldrin::find {

class FindViews {
 public:
  virtual ~FindViews() = default;
  /// The list was read anew or stands on another record: the view that shows it draws its current record.
  virtual void ShowFolderRecords() = 0;
  /// Runs a dialog while the picture show, if it is in view, stands still with its music; both go on
  /// afterwards.
  virtual void HoldShow(const std::function<void()>& dialog) = 0;
};

}  // namespace veldrin::find
