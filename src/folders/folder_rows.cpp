#include "folders/folder_rows.h"

#include <QHash>
#include <vector>

#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"

namespace veldrin::folders {

using controls::Node;
using engine::Database;

namespace {

// By its key: any folder can be given that name.
bool IsPseudoFolder(const QString& key) { return key.endsWith(UnorganizedKey({})); }

// The names of a subtree by their keys, without the pseudo-folders.
void CollectNames(const Node& node, QHash<QString, QString>& names) {
  if (!IsPseudoFolder(node.Tag())) names[node.Tag()] = node.Text();
  for (const Node* child = node.Child(); child != nullptr; child = child->Next()) CollectNames(*child, names);
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

void DeleteFolderRows(Database& database, const Node& node) {
  if (node.Children() > 0) {
    for (const Node* child = node.Child()->LastSibling(); child != nullptr; child = child->Previous()) {
      DeleteFolderRows(database, *child);
    }
  }
  database.Execute(QStringLiteral("DELETE FROM %1 WHERE IDNo = '%2'")
                       .arg(catalogue::LevelTable(LevelOfKey(node.Tag())), node.Tag()));
}

bool IsOnlyRow(Database& database, const Node& node) {
  const auto rows = database.OpenRecordset(
      QStringLiteral("SELECT IDNo FROM %1 WHERE IDNo Like '%2*'")
          .arg(catalogue::LevelTable(LevelOfKey(node.Tag())), node.Tag().chopped(SegmentLength)),
      engine::dbOpenSnapshot);
  return rows->RecordCount() <= 1;
}

bool RowIsAsShown(Database& database, const Node& node) {
  if (node.Parent() == nullptr) return true;
  if (IsPseudoFolder(node.Tag())) return RowIsAsShown(database, *node.Parent());
  const auto row = database.OpenRecordset(QStringLiteral("SELECT FolderName FROM %1 WHERE IDNo = '%2'")
                                              .arg(catalogue::LevelTable(LevelOfKey(node.Tag())), node.Tag()),
                                          engine::dbOpenSnapshot);
  return row->RecordCount() == 1 && row->Field(QStringLiteral("FolderName")).toString() == node.Text();
}

bool SubtreeIsAsShown(Database& database, const Node& node) {
  if (IsPseudoFolder(node.Tag())) return RowIsAsShown(database, node);
  QHash<QString, QString> names;
  CollectNames(node, names);
  for (int level = LevelOfKey(node.Tag()); level <= catalogue::LevelCount; ++level) {
    const auto rows =
        database.OpenRecordset(QStringLiteral("SELECT IDNo, FolderName FROM %1 WHERE IDNo Like '%2*'")
                                   .arg(catalogue::LevelTable(level), node.Tag()),
                               engine::dbOpenSnapshot);
    for (; !rows->AtEOF(); rows->MoveNext()) {
      const QString name = rows->Field(QStringLiteral("FolderName")).toString();
      const QString key = rows->Field(QStringLiteral("IDNo")).toString();
      if (IsPseudoFolder(key)) continue;
      if (!names.contains(key) || names.take(key) != name) return false;
    }
  }
  return names.isEmpty();
}

}  // namespace veldrin::folders
