#include "folders/folder_nodes.h"

#include <algorithm>

#include "base/runtime_error.h"
#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"

namespace veldrin::folders {

using controls::Node;
using controls::TreeView;

QString SelectedFolderKey(const TreeView& tree) {
  const Node* node = tree.SelectedItem();
  return node == nullptr || node == tree.Root() ? QString() : node->Tag();
}

void SetNodeColor(Node& node, bool grey) {
  node.SetGrey(grey);
  for (Node* child = node.Child(); child != nullptr; child = child->Next()) SetNodeColor(*child, grey);
}

bool IsDuplicateFolder(const Node& node, QString& name) {
  if (name.isEmpty()) name = node.Text();
  for (const Node* sibling = node.FirstSibling(); sibling != nullptr; sibling = sibling->Next()) {
    if (sibling != &node && sibling->Text() == name) return true;
  }
  return false;
}

void AddUnorganizedNode(TreeView& tree) {
  Node* parent = tree.SelectedItem();
  if (parent->Children() > 0) return;
  AddFolderNode(tree);
  tree.SelectedItem()->SetText(UnorganizedName());
  tree.SelectedItem()->SetTag(UnorganizedKey(parent->Tag()));
  tree.Select(parent);
}

namespace {

int LevelsOf(const Node& node) {
  int below = 0;
  for (const Node* child = node.Child(); child != nullptr; child = child->Next()) {
    if (!IsUnorganized(*child)) below = std::max(below, LevelsOf(*child));
  }
  return below + 1;
}

}  // namespace

bool TakesCopyOf(const Node& target, const Node& source) {
  return &target != &source && !target.IsBelow(source) &&
         GetNodeLevel(target) + LevelsOf(source) <= catalogue::LevelCount;
}

Node* LastBeside(const Node& node) {
  const Node* parent = node.Parent();
  if (parent == nullptr || parent->Children() != 2) return nullptr;
  Node* beside = parent->Child() == &node ? parent->Child()->Next() : parent->Child();
  return IsUnorganized(*beside) ? beside : nullptr;
}

void RequireOutside(const Node& target, const Node& source) {
  if (&target == &source || target.IsBelow(source))
    throw base::RuntimeError(base::errOutOfStackSpace, QStringLiteral("Out of stack space."));
}

void TakeBackNode(TreeView& tree, Node& added, bool isFirst) {
  Node& parent = *added.Parent();
  tree.Remove(&added);
  while (isFirst && parent.Children() > 0) tree.Remove(parent.Child());
}

}  // namespace veldrin::folders
