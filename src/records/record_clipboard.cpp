#include "records/record_clipboard.h"

#include <array>

#include "controls/busy_pointer.h"
#include "engine/dao/transaction.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"

namespace veldrin::records {

using controls::BusyPointer;
using controls::Node;
using folders::LinkKey;

namespace {

// The key of the folder whose photos the node shows: the pseudo-folder's are its parent's own.
QString KeyOfPhotos(const Node& node) {
  return folders::IsUnorganized(node) ? node.Tag().chopped(folders::SegmentLength) : node.Tag();
}

// Photos that move up lose all places below the new one, which shows them in any case; otherwise just the
// place that they were cut from.
void DeleteLinksOfCut(engine::Database& database, const Node& target, const Node& source) {
  QString sql = QStringLiteral("DELETE tblPhotoLinks.* FROM tblPhotoLinks INNER JOIN ActPhotoLinks ON ");
  if (folders::IsAboveFolder(target, source)) {
    sql += QStringLiteral("tblPhotoLinks.PhotoID = ActPhotoLinks.PhotoID");
    const QString key = KeyOfPhotos(target);
    if (!key.isEmpty()) sql += QStringLiteral(" WHERE tblPhotoLinks.IDNo Like '%1*'").arg(key);
  } else {
    sql += QStringLiteral(
        "tblPhotoLinks.IDNo = ActPhotoLinks.IDNo AND tblPhotoLinks.PhotoID = ActPhotoLinks.PhotoID");
  }
  database.Execute(sql);
}

}  // namespace

RecordClipboard::RecordClipboard(catalogue::RecordList& data1, controls::TreeView& tvTreeView,
                                 catalogue::RecordSource& source, engine::DBEngine& engine,
                                 const catalogue::Paths& paths, ClipboardViews& views)
    : Data1(data1), Tree(tvTreeView), Source(source), Engine(engine), ThePaths(paths), Views(views) {
  connect(&Tree, &controls::TreeView::NodeRemoved, this, &RecordClipboard::tvTreeView_NodeRemoved);
}

// A folder that goes takes the pending command with it.
void RecordClipboard::tvTreeView_NodeRemoved(const Node* node) {
  if (node == RecordCutIndex) RecordUndoCut_Click();
  if (node == RecordCopyIndex) RecordCopyIndex = nullptr;
}

// --- staging ----------------------------------------------------------------------------------------------

// The key staged is that of the folder in view, whether or not a record is filed there itself. False without
// a selection: the table is empty then.
bool RecordClipboard::StageSelection() {
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  database->Execute(QStringLiteral("DELETE FROM ActPhotoLinks"));
  if (Data1.SelBookmarks.Count() == 0) return false;
  const QString key = LinkKey(Tree.SelectedItem()->Tag());
  const QStringList columns{QStringLiteral("IDNo"), QStringLiteral("PhotoID")};
  engine::Transaction group(*database, engine::Writes::WorkingTables);
  for (int i = 0; i < Data1.SelBookmarks.Count(); ++i) {
    database->Insert(QStringLiteral("ActPhotoLinks"), columns,
                     std::array<engine::Value, 2>{key, Data1.SelBookmarks[i]});
  }
  group.Commit();
  return true;
}

void RecordClipboard::RecordCopy_Click() {
  const BusyPointer busy;
  if (!StageSelection()) return;
  RecordCutIndex = nullptr;
  RecordCopyIndex = Tree.SelectedItem();
  Views.SetSelectionGrey(false);
  Views.EnableRecordPaste(true);
}

void RecordClipboard::RecordCut_Click() {
  const BusyPointer busy;
  if (!StageSelection()) return;
  RecordCopyIndex = nullptr;
  RecordCutIndex = Tree.SelectedItem();
  Views.SetSelectionGrey(true);
  Views.EnableRecordPaste(true);
  Views.ShowRecordUndoCut(true);
}

void RecordClipboard::RecordUndoCut_Click() {
  if (!IsCutPending()) return;
  RecordCutIndex = nullptr;
  Views.ShowRecordUndoCut(false);
  Views.EnableRecordPaste(false);
  Views.SetSelectionGrey(false);
}

// --- the paste --------------------------------------------------------------------------------------------

// In one transaction: a photo is never without a place, wherever the run may break off.
void RecordClipboard::LinkStaged(const Node& target) {
  const QString key = LinkKey(target.Tag());
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  engine::Transaction group(*database);
  if (IsCutPending()) DeleteLinksOfCut(*database, target, *RecordCutIndex);
  // A place that the target has already is given anew.
  database->Execute(
      QStringLiteral("DELETE tblPhotoLinks.* FROM tblPhotoLinks INNER JOIN ActPhotoLinks ON "
                     "tblPhotoLinks.PhotoID = ActPhotoLinks.PhotoID WHERE tblPhotoLinks.IDNo = '%1'")
          .arg(key));
  database->Execute(
      QStringLiteral("INSERT INTO tblPhotoLinks SELECT '%1' as IDNo, PhotoID FROM ActPhotoLinks").arg(key));
  database->Execute(QStringLiteral("DELETE FROM ActPhotoLinks"));
  group.Commit();
}

void RecordClipboard::RecordPaste_Click() {
  const BusyPointer busy;
  if (!IsCutPending() && RecordCopyIndex == nullptr) return;
  if (IsCutPending()) Views.ShowRecordUndoCut(false);
  LinkStaged(*Tree.SelectedItem());
  Views.SetSelectionGrey(false);
  RecordCutIndex = nullptr;
  RecordCopyIndex = nullptr;
  Source.SetRecordSource();
  Views.ShowFolderRecords();
  Views.SetRecordMenus();
}

}  // namespace veldrin::records
