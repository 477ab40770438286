#include "folders/folder_tree.h"

#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "platform/sql_dialect.h"

namespace veldrin::folders {

using platform::Database;
using platform::Node;
using platform::TreeView;

namespace {

// Nodes are added below whichever node is selected, so the selection goes back to the parent after each
// child.
void LoadLevel(Database& database, TreeView& tree, Node& parent, int level) {
  const auto rows = database.OpenRecordset(BuildLevelSql(level, parent.Tag()), platform::dbOpenSnapshot);
  for (; !rows->AtEOF(); rows->MoveNext()) {
    AddFolderNode(tree);
    Node* child = tree.SelectedItem();
    child->SetText(rows->Field(QStringLiteral("FolderName")).toString());
    child->SetTag(rows->Field(QStringLiteral("IDNo")).toString());
    LoadChildFolders(database, tree, *child);
    tree.Select(&parent);
  }
}

}  // namespace

void LoadFolderTree(TreeView& tree, platform::DBEngine& engine, const QString& workFile) {
  Node* root = tree.Add(nullptr, QStringLiteral("Photos"));
  tree.SetFilling(true);
  tree.Select(root);
  const auto database = engine.OpenDatabase(workFile);
  LoadLevel(*database, tree, *root, 1);
  tree.SetFilling(false);
  root->setExpanded(true);
}

void LoadChildFolders(Database& database, TreeView& tree, Node& node) {
  const int level = GetNodeLevel(node) + 1;
  if (level > catalogue::LevelCount) return;
  LoadLevel(database, tree, node, level);
}

void AddFolderNode(TreeView& tree) {
  tree.Select(tree.Add(tree.SelectedItem(), QStringLiteral("New Folder")));
}

int GetNodeLevel(const Node& node) {
  int level = 0;
  for (const Node* parent = node.Parent(); parent != nullptr; parent = parent->Parent()) ++level;
  return level;
}

QString AddFolderRecord(platform::DBEngine& engine, const QString& workFile, int level, const QString& name,
                        const QString& parentKey) {
  return AddFolderRecord(*engine.OpenDatabase(workFile), level, name, parentKey);
}

QString AddFolderRecord(Database& database, int level, const QString& name, const QString& parentKey) {
  const QString table = catalogue::LevelTable(level);
  const auto insert = [&](const QString& key, const QString& folder) {
    database.Execute(QStringLiteral("INSERT INTO %1 (IDNo, FolderName) VALUES('%2', '%3')")
                         .arg(table, key, platform::QuoteSql(folder)));
  };

  const QString below = level == 1 ? QString() : QStringLiteral(" WHERE IDNo LIKE '%1*'").arg(parentKey);
  const auto highest = database.OpenRecordset(
      QStringLiteral("SELECT Max(IDNo) AS ID FROM %1%2").arg(table, below), platform::dbOpenSnapshot);
  const platform::Value id = highest->Field(QStringLiteral("ID"));
  int number = 1;
  if (platform::IsNull(id)) {
    insert(UnorganizedKey(parentKey), UnorganizedName());
  } else {
    number = id.toString().right(SegmentLength).toInt() + 1;
  }
  QString key = parentKey + PadKey(number, SegmentLength);
  insert(key, name);
  return key;
}

bool IsUnorganized(const Node& node) { return node.Text() == UnorganizedName(); }

const Node* FindUnorganizedChild(const Node& node) {
  if (node.Children() == 0) return nullptr;
  const Node* last = node.Child()->LastSibling();
  for (const Node* child = node.Child(); child != last; child = child->Next()) {
    if (IsUnorganized(*child)) return child;
  }
  return nullptr;
}

bool IsAboveFolder(const Node& target, const Node& source) {
  if (target.Index() == 1) return true;
  if (&target == &source) return false;
  for (const Node* above = &source; above != nullptr; above = above->Parent()) {
    if (above == &target && above->Index() != 1) return true;
    if (FindUnorganizedChild(*above) == &target) return true;
  }
  return false;
}

}  // namespace veldrin::folders
