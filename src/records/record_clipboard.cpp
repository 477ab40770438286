#include "records/record_clipboard.h"

#include <QSet>
#include <utility>

#include "controls/busy_pointer.h"
#include "engine/dao/transaction.h"
#include "folders/change_boxes.h"
#include "folders/folder_keys.h"
#include "folders/folder_rows.h"
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

// The key staged is that of the folder in view, whether or not a record is filed there itself.
void StagePhotos(engine::Database& database, const QString& key,
                 const std::vector<catalogue::CheckedPhotos::Photo>& photos) {
  constexpr qsizetype rowsAtOnce = 512;
  database.Execute(QStringLiteral("DELETE FROM ActPhotoLinks"));
  QStringList numbers;
  for (const auto& photo : photos) numbers << QString::number(photo.PhotoID);
  for (qsizetype first = 0; first < numbers.size(); first += rowsAtOnce) {
    database.Execute(QStringLiteral("INSERT INTO ActPhotoLinks SELECT '%1' AS IDNo, PhotoID FROM tblPhotos "
                                    "WHERE PhotoID IN (%2)")
                         .arg(key, numbers.mid(first, rowsAtOnce).join(QLatin1Char(','))));
  }
}

}  // namespace

RecordClipboard::RecordClipboard(catalogue::RecordList& data1, controls::TreeView& tvTreeView,
                                 catalogue::RecordSource& source, engine::DBEngine& engine,
                                 const catalogue::Paths& paths, base::TellWork tell)
    : Data1(data1), Tree(tvTreeView), Source(source), Engine(engine), ThePaths(paths), Tell(std::move(tell)) {
  connect(&Tree, &controls::TreeView::NodeRemoved, this, &RecordClipboard::tvTreeView_NodeRemoved);
  // A new selection isn't the one that was cut.
  connect(&Data1.SelBookmarks, &catalogue::SelBookmarkList::Changed, this, [this] { SetGrey(false); });
}

const Node* RecordClipboard::CopySource() const {
  return ThePending && !ThePending->IsCut ? ThePending->Source : nullptr;
}

// A folder that goes takes the pending command with it.
void RecordClipboard::tvTreeView_NodeRemoved(const Node* node) {
  if (!ThePending || node != ThePending->Source) return;
  RecordUndoCut_Click();
  ThePending.reset();
}

void RecordClipboard::Forget(const std::vector<int>& photos) {
  if (!ThePending) return;
  const QSet<int> gone(photos.begin(), photos.end());
  std::erase_if(ThePending->Photos,
                [&](const catalogue::ChosenPhoto& photo) { return gone.contains(photo.PhotoID); });
}

void RecordClipboard::Renew(const catalogue::ChosenPhoto& renewed) {
  if (!ThePending) return;
  for (catalogue::ChosenPhoto& photo : ThePending->Photos)
    if (photo.PhotoID == renewed.PhotoID) photo.Look = renewed.Look;
}

void RecordClipboard::SetGrey(bool grey) {
  if (std::exchange(IsGrey, grey) != grey) Q_EMIT SelectionGrey(grey);
}

// Without a selection nothing is noted, and what was is not to be filed any more.
void RecordClipboard::Take(bool isCut) {
  catalogue::Choice choice = Data1.Chosen(true);
  if (!choice.IsSelection) {
    if (ThePending) ThePending->Photos.clear();
    return;
  }
  const BusyPointer busy;
  NoteLooks(*Engine.OpenDatabase(ThePaths.WorkFile), choice.Photos);
  ThePending = Pending{Tree.SelectedItem(), isCut, std::move(choice.Photos)};
  UndoCutShown |= isCut;
  SetGrey(isCut);
  Q_EMIT Changed();
}

void RecordClipboard::RecordUndoCut_Click() {
  if (!IsCutPending()) return;
  ThePending.reset();
  UndoCutShown = false;
  SetGrey(false);
  Q_EMIT Changed();
}

// --- the paste --------------------------------------------------------------------------------------------

// In one transaction: a photo is never without a place, wherever the run may break off. Nothing where a
// folder is another one now; otherwise tells of the photos that are.
std::optional<catalogue::CheckedPhotos> RecordClipboard::LinkPending(const Node& target) const {
  const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
  catalogue::CheckedPhotos checked;
  if (!database->WriteGroup([&] { return LinkPending(*database, target, checked); })) return {};
  return checked;
}

bool RecordClipboard::LinkPending(engine::Database& database, const Node& target,
                                  catalogue::CheckedPhotos& checked) const {
  const Node& source = *ThePending->Source;
  if (!folders::RowIsAsShown(database, target) ||
      (ThePending->IsCut && !folders::RowIsAsShown(database, source)))
    return false;
  checked = CheckChosen(database, ThePending->Photos);
  StagePhotos(database, LinkKey(source.Tag()), checked.Same);
  if (ThePending->IsCut) DeleteLinksOfCut(database, target, source);
  const QString key = LinkKey(target.Tag());
  // A place that the target has already is given anew.
  database.Execute(
      QStringLiteral("DELETE tblPhotoLinks.* FROM tblPhotoLinks INNER JOIN ActPhotoLinks ON "
                     "tblPhotoLinks.PhotoID = ActPhotoLinks.PhotoID WHERE tblPhotoLinks.IDNo = '%1'")
          .arg(key));
  database.Execute(
      QStringLiteral("INSERT INTO tblPhotoLinks SELECT '%1' as IDNo, PhotoID FROM ActPhotoLinks").arg(key));
  database.Execute(QStringLiteral("DELETE FROM ActPhotoLinks"));
  return true;
}

void RecordClipboard::RecordPaste_Click() {
  if (!ThePending) return;
  base::WorkReport report{
      QStringLiteral("photos"), QStringLiteral("filed in ") + Tree.SelectedItem()->Text(), 0, {}};
  std::optional<catalogue::CheckedPhotos> filed;
  try {
    const BusyPointer busy;
    filed = LinkPending(*Tree.SelectedItem());
    if (filed) {
      if (ThePending->IsCut) UndoCutShown = false;
      ThePending.reset();
      SetGrey(false);
      Q_EMIT Changed();
      report.Done = static_cast<int>(filed->Same.size());
      Source.SetRecordSource(report);
      Q_EMIT Pasted();
    }
  } catch (const base::RuntimeError& error) {
    for (const catalogue::ChosenPhoto& photo : ThePending->Photos)
      report.Failures.push_back({NameOf(photo), base::ReasonOf(error)});
    return Tell(report);
  }
  if (!filed) return folders::TellFolderChanged(&Tree);
  folders::TellPhotosChanged(&Tree, filed->Others());
  Tell(report);
}

}  // namespace veldrin::records
