#include "folders/folder_navigation.h"

#include "controls/busy_pointer.h"
#include "controls/msg_box.h"

namespace veldrin::folders {

using controls::Node;

FolderNavigation::FolderNavigation(controls::TreeView& tvTreeView, QLineEdit& txtFldrSearch,
                                   catalogue::RecordSource& source, FolderViews& views)
    : Tree(tvTreeView), Search(txtFldrSearch), Source(source), Views(views) {
  connect(&Tree, &controls::TreeView::MouseDown, this, &FolderNavigation::tvTreeView_MouseDown);
  connect(&Tree, &controls::TreeView::NodeClick, this, [this](Node* node) { tvTreeView_NodeClick(*node); });
  // Before a key moves the selection it stands on the node that the views show, as before a click.
  connect(&Tree, &controls::TreeView::KeyDown, this, &FolderNavigation::NoteSelection);
  connect(&Tree, &controls::TreeView::KeyUp, this, &FolderNavigation::tvTreeView_KeyUp);
}

void FolderNavigation::tvTreeView_NodeClick(const Node& node) {
  if (node.Index() == LastNodeIndex) return;
  const controls::BusyPointer busy;
  Source.ClearQuery();
  Source.SetRecordSource();
  Views.ShowFolderRecords();
  Views.SetFolderMenus();
  Views.SetRecordMenus();
}

void FolderNavigation::tvTreeView_MouseDown(Qt::MouseButton button, const QPoint& point) {
  NoteSelection();
  if (button != Qt::RightButton) return;
  Node* node = Tree.HitTest(point);
  if (node == nullptr) return;
  Tree.Select(node);
  tvTreeView_NodeClick(*node);
  Views.PopupFolderMenu();
}

void FolderNavigation::NoteSelection() {
  if (Tree.SelectedItem() != nullptr) LastNodeIndex = Tree.SelectedItem()->Index();
}

void FolderNavigation::bttnGo_Click() {
  const QString name = Search.text().toLower();
  if (name.isEmpty()) return;
  for (int i = 1; i <= Tree.Count(); ++i) {
    Node* node = Tree.NodeAt(i);
    if (node->Text().toLower() != name) continue;
    Tree.Select(node);
    tvTreeView_NodeClick(*node);
    // A node that is taken to be shown already is selected all the same: the menus are for it.
    Views.SetFolderMenus();
    Views.SetRecordMenus();
    return;
  }
  controls::MsgBox(&Tree, QStringLiteral("The folder can't be found!"), controls::vbInformation,
                   QStringLiteral("Folder Search"));
}

}  // namespace veldrin::folders
