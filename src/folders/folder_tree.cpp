#include "folders/folder_tree.h"

#include <algorithm>
#include <map>
#include <vector>

#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "folders/folder_writer.h"

namespace veldrin::folders {

using controls::Node;
using controls::TreeView;
using engine::Database;

namespace {

// The rows of the level tables, each table read once: a query for each folder would take a second for ten
// thousand of them.
class FolderLevels {
 public:
  explicit FolderLevels(Database& database) : TheDatabase(database) {}

  struct Row {
    QString Key;
    QString Name;
    size_t Place;  ///< in the order of names
  };
  /// The folders of a level whose keys begin with the parent's, in the order of their names.
  std::vector<Row> Below(int level, const QString& parentKey);

 private:
  void Read(int level);

  Database& TheDatabase;
  std::map<int, std::vector<Row>> Levels;  ///< by level, in the order of keys
};

void FolderLevels::Read(int level) {
  auto& table = Levels[level];
  const auto rows = TheDatabase.OpenRecordset(BuildLevelSql(level, {}), engine::dbOpenSnapshot);
  for (const auto& row : rows->ReadRows(0, rows->RecordCount())) {
    table.push_back({row[0].toString(), row[1].toString(), table.size()});
  }
  std::sort(table.begin(), table.end(), [](const Row& a, const Row& b) { return a.Key < b.Key; });
}

std::vector<FolderLevels::Row> FolderLevels::Below(int level, const QString& parentKey) {
  if (!Levels.contains(level)) Read(level);
  const auto& table = Levels[level];
  const auto first = std::lower_bound(table.begin(), table.end(), parentKey,
                                      [](const Row& row, const QString& key) { return row.Key < key; });
  const auto last =
      std::find_if(first, table.end(), [&](const Row& row) { return !row.Key.startsWith(parentKey); });
  std::vector<Row> below(first, last);
  std::sort(below.begin(), below.end(), [](const Row& a, const Row& b) { return a.Place < b.Place; });
  return below;
}

void LoadChildFolders(FolderLevels& levels, TreeView& tree, Node& node) {
  const int level = GetNodeLevel(node) + 1;
  if (level > catalogue::LevelCount) return;
  for (const FolderLevels::Row& row : levels.Below(level, node.Tag())) {
    AddFolderNode(tree);
    Node* child = tree.SelectedItem();
    child->SetText(row.Name);
    child->SetTag(row.Key);
    LoadChildFolders(levels, tree, *child);
    // Nodes are added below whichever node is selected.
    tree.Select(&node);
  }
}

}  // namespace

void LoadFolderTree(TreeView& tree, engine::DBEngine& engine, const QString& workFile) {
  Node* root = tree.Add(nullptr, QStringLiteral("Photos"));
  tree.SetFilling(true);
  tree.Select(root);
  const auto database = engine.OpenDatabase(workFile);
  FolderLevels levels(*database);
  LoadChildFolders(levels, tree, *root);
  tree.SetFilling(false);
  root->setExpanded(true);
}

void AddFolderNode(TreeView& tree) { tree.Select(tree.Add(tree.SelectedItem(), NewFolderName())); }

int GetNodeLevel(const Node& node) {
  int level = 0;
  for (const Node* parent = node.Parent(); parent != nullptr; parent = parent->Parent()) ++level;
  return level;
}

QString AddFolderRecord(engine::DBEngine& engine, const QString& workFile, int level, const QString& name,
                        const QString& parentKey) {
  const auto database = engine.OpenDatabase(workFile);
  return FolderWriter(*database).AddFolderRecord(level, name, parentKey);
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
