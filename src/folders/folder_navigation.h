// The selected node as the active folder: mouse, keyboard, pop-up and the search by name.
#pragma once

#include <QLineEdit>
#include <QObject>

#include "catalogue/record_source.h"
#include "controls/tree_view.h"

namespace veldrin::folders {

/// While no label is edited, the selected node is the folder that the list was read for.
class FolderNavigation : public QObject {
  Q_OBJECT

 public:
  /// The search box belongs to the caller.
  FolderNavigation(controls::TreeView& tvTreeView, QLineEdit& txtFldrSearch, catalogue::RecordSource& source);

  /// Reads the list for the selected node, without a query, unless it was read for it already. When that
  /// fails the node that was shown is selected again, and the error raised.
  void tvTreeView_NodeClick();
  /// The same in any case.
  void ShowAnew();
  /// After a change of the selected node alone: a list that is its own already stays, with its record, its
  /// selection and what is typed beside it.
  void ShowRenamed();
  void tvTreeView_MouseDown(Qt::MouseButton button, const QPoint& point);
  /// Selects the first folder of the name typed, in the order of making, without regard to case.
  void bttnGo_Click();

 Q_SIGNALS:
  /// The list is another folder's.
  void FolderShown();
  /// The Folder menu is to be shown at the pointer.
  void FolderMenuRequested();

 private:
  controls::TreeView& Tree;
  QLineEdit& Search;
  catalogue::RecordSource& Source;
  controls::Node* LastNode = nullptr;  ///< which the list was read for; null makes the next click read it
};

}  // namespace veldrin::folders
