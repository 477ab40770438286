#include "folders/folder_rows.h"

#include <vector>

#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"

namespace veldrin::folders {

using controls::Node;
using engine::Database;

namespace {

void DeleteFolderRows(Database& database, const Node& node) {
  if (node.Children() > 0) {
    for (const Node* child = node.Child()->LastSibling(); child != nullptr; child = child->Previous()) {
      DeleteFolderRows(database, *child);
    }
  }
  database.Execute(QStringLiteral("DELETE FROM %1 WHERE IDNo = '%2'")
                       .arg(catalogue::LevelTable(LevelOfKey(node.Tag())), node.Tag()));
}

}  // namespace

void AssignFolderKeys(FolderWriter& writer, Node& node) {
  std::vector<Node*> folders;
  QStringList names;
  for (Node* child = node.Child(); child != nullptr; child = child->Next()) {
    if (IsUnorganized(*child)) {
      // Its row comes with the first folder beside it.
      child->SetTag(UnorganizedKey(node.Tag()));
      continue;
    }
    folders.push_back(child);
    names << child->Text();
  }
  if (folders.empty()) return;
  const QStringList keys = writer.AddFolderRecords(GetNodeLevel(node) + 1, names, node.Tag());
  for (size_t i = 0; i < folders.size(); ++i) {
    folders[i]->SetTag(keys[static_cast<qsizetype>(i)]);
    AssignFolderKeys(writer, *folders[i]);
  }
}

void StoreFolders(Database& database, Node& node) {
  FolderWriter writer(database);
  node.SetTag(writer.AddFolderRecord(GetNodeLevel(node), node.Text(), node.Parent()->Tag()));
  AssignFolderKeys(writer, node);
}

void MoveLinksToParent(Database& database, const Node& node) {
  if (node.Index() == 1) return;
  // Rows that clash are dropped; any other failure ends the command, or links that weren't staged would be
  // deleted.
  const auto execute = [&database](const QString& sql) { database.Execute(sql); };
  // Photos of a top-level folder go where those without a folder are.
  const QString key = node.Parent()->Index() == 1 ? UnorganizedKey({}) : node.Parent()->Tag();
  const QString subtree = QStringLiteral(" WHERE IDNo Like '%1*'").arg(node.Tag());

  execute(QStringLiteral("DELETE FROM ActPhotoLinks"));
  execute(QStringLiteral("INSERT INTO ActPhotoLinks SELECT DISTINCT '%1' AS IDNo, PhotoID FROM tblPhotoLinks")
              .arg(LinkKey(key)) +
          subtree);
  execute(QStringLiteral("DELETE FROM tblPhotoLinks") + subtree);
  execute(QStringLiteral("INSERT INTO tblPhotoLinks SELECT ActPhotoLinks.IDNo, ActPhotoLinks.PhotoID "
                         "FROM ActPhotoLinks LEFT JOIN tblPhotoLinks "
                         "ON (Left(ActPhotoLinks.IDNo, %1) = Left(tblPhotoLinks.IDNo, %1)) "
                         "AND (ActPhotoLinks.PhotoID = tblPhotoLinks.PhotoID) "
                         "WHERE tblPhotoLinks.IDNo is null")
              .arg(key.size()));
}

void DeleteFolderNodes(Database& database, controls::TreeView& tree, Node& node) {
  DeleteFolderRows(database, node);
  tree.Remove(&node);
}

}  // namespace veldrin::folders
