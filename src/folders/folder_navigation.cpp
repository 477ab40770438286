#include "folders/folder_navigation.h"

#include "base/runtime_error.h"
#include "controls/busy_pointer.h"
#include "controls/msg_box.h"

namespace veldrin::folders {

using controls::Node;

FolderNavigation::FolderNavigation(controls::TreeView& tvTreeView, QLineEdit& txtFldrSearch,
                                   catalogue::RecordSource& source)
    : Tree(tvTreeView), Search(txtFldrSearch), Source(source) {
  connect(&Tree, &controls::TreeView::MouseDown, this, &FolderNavigation::tvTreeView_MouseDown);
  connect(&Tree, &controls::TreeView::NodeClick, this, &FolderNavigation::tvTreeView_NodeClick);
  connect(&Tree, &controls::TreeView::NodeRemoved, this, [this](const Node* node) {
    if (node == LastNode) LastNode = nullptr;
  });
}

void FolderNavigation::tvTreeView_NodeClick() {
  if (Tree.SelectedItem() != LastNode) ShowAnew();
}

void FolderNavigation::ShowAnew() {
  const controls::BusyPointer busy;
  Source.ClearQuery();
  try {
    Source.SetRecordSource();
  } catch (const base::RuntimeError&) {
    if (LastNode != nullptr) Tree.Select(LastNode);
    throw;
  }
  LastNode = Tree.SelectedItem();
  Q_EMIT FolderShown();
}

void FolderNavigation::ShowRenamed() {
  if (Tree.SelectedItem() != LastNode) return ShowAnew();
  Q_EMIT FolderShown();
}

void FolderNavigation::tvTreeView_MouseDown(Qt::MouseButton button, const QPoint& point) {
  if (button != Qt::RightButton) return;
  Node* node = Tree.HitTest(point);
  if (node == nullptr) return;
  Tree.Select(node);
  tvTreeView_NodeClick();
  Q_EMIT FolderMenuRequested();
}

void FolderNavigation::bttnGo_Click() {
  const QString name = Search.text().toLower();
  if (name.isEmpty()) return;
  for (int i = 1; i <= Tree.Count(); ++i) {
    Node* node = Tree.NodeAt(i);
    if (node->Text().toLower() != name) continue;
    Tree.Select(node);
    return tvTreeView_NodeClick();
  }
  controls::MsgBox(&Tree, QStringLiteral("The folder can't be found!"), controls::vbInformation,
                   QStringLiteral("Folder Search"));
}

}  // namespace veldrin::folders
