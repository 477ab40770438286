// The selected node as the active folder: mouse, keyboard, pop-up and the search by name.
#pragma once

#include <QLineEdit>
#include <QObject>

#include "catalogue/record_source.h"
#include "controls/tree_view.h"

namespace veldrin::folders {

/// What a change of the folder asks of the views and menus.
class FolderViews {
 public:
  virtual ~FolderViews() = default;
  /// Draws the shown view of the list anew, from its current record.
  virtual void ShowFolderRecords() = 0;
  virtual void SetFolderMenus() = 0;
  virtual void SetRecordMenus() = 0;
  /// Shows or hides FolderUndoCut and the line below it.
  virtual void ShowFolderUndoCut(bool visible) = 0;
  virtual void EnableFolderPaste(bool enabled) = 0;
  /// Shows the Folder menu at the pointer.
  virtual void PopupFolderMenu() = 0;
};

class FolderNavigation : public QObject {
 public:
  /// The search box belongs to the caller.
  FolderNavigation(controls::TreeView& tvTreeView, QLineEdit& txtFldrSearch, catalogue::RecordSource& source,
                   FolderViews& views);

  /// The index of the node that the views are taken to show; -1 makes the next tvTreeView_NodeClick act.
  int LastNodeIndex = -1;

  /// Refreshes everything for the selected folder, unless `node` is the one shown already.
  void tvTreeView_NodeClick(const controls::Node& node);
  void tvTreeView_MouseDown(Qt::MouseButton button, const QPoint& point);
  void tvTreeView_KeyUp() { NoteSelection(); }
  /// Selects the first folder of the name typed, in the order of making, without regard to case.
  void bttnGo_Click();

 private:
  void NoteSelection();

  controls::TreeView& Tree;
  QLineEdit& Search;
  catalogue::RecordSource& Source;
  FolderViews& Views;
};

}  // namespace veldrin::folders
