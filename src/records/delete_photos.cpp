#include "records/delete_photos.h"

#include <QFile>
#include <algorithm>

#include "base/failure.h"
#include "catalogue/image_store.h"
#include "controls/busy_pointer.h"
#include "controls/msg_box.h"
#include "engine/dao/transaction.h"
#include "folders/folder_keys.h"

namespace veldrin::records {

using base::ResumeNext;

namespace {

// Photos whose rows are written in one transaction.
constexpr size_t GroupLength = 64;

}  // namespace

bool DeletePhotos::Ask(const QString& question) const {
  return controls::MsgBox(&Window, question,
                          controls::vbYesNo | controls::vbQuestion | controls::vbDefaultButton2,
                          QStringLiteral("Delete Record(s)")) == controls::vbYes;
}

void DeletePhotos::RecordDel_Click() {
  if (Data1.RecordCount() == 0) return;
  if (Ask(QStringLiteral("This option will delete the data and image(s) of selected record(s) from the "
                         "database, can't be recovered!\r"
                         "Are you sure to delete the selected record(s)?"))) {
    WriteInGroups([this](engine::Database& database, Group group) { DeleteGroup(database, group); });
  }
}

void DeletePhotos::RecordRmv_Click() {
  if (Data1.RecordCount() == 0) return;
  if (Ask(QStringLiteral("This option will remove the data and image(s) of selected record(s) from the "
                         "current folder,\r"
                         "but it/they will not be deleted from the database. It/they could be in another "
                         "folder or unorganized.\r"
                         "Are you sure to remove the selected record(s) from the folder?"))) {
    WriteInGroups([this](engine::Database& database, Group group) { RemoveGroup(database, group); });
  }
}

// A record's bookmark is its number.
std::vector<int> DeletePhotos::AffectedPhotos() const {
  const int count = Data1.SelBookmarks.Count();
  if (count == 0 || Views.FormViewIsShown()) return {Data1.Bookmark()};
  std::vector<int> photos;
  photos.reserve(count);
  for (int i = 0; i < count; ++i) photos.push_back(Data1.SelBookmarks[i]);
  return photos;
}

void DeletePhotos::WriteInGroups(const std::function<void(engine::Database&, Group)>& write) {
  const controls::BusyPointer busy;
  const std::vector<int> photos = AffectedPhotos();
  // At the first group that can't be written it ends: the others would wait as long.
  ResumeNext([&] {
    const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
    for (size_t first = 0; first < photos.size(); first += GroupLength) {
      write(*database, Group(photos).subspan(first, std::min(GroupLength, photos.size() - first)));
    }
  });
  Source.SetRecordSource();
  Views.ShowFolderRecords();
}

// The rows first: an image that is left without its row does no harm, a row without its image would.
void DeletePhotos::DeleteGroup(engine::Database& database, Group group) const {
  QStringList numbers;
  for (const int photoId : group) numbers << QString::number(photoId);
  QStringList files;
  engine::Transaction transaction(database);
  const auto rows =
      database.OpenRecordset(QStringLiteral("SELECT PhotoID, ImageType FROM tblPhotos WHERE PhotoID IN (%1)")
                                 .arg(numbers.join(QLatin1Char(','))),
                             engine::dbOpenSnapshot);
  for (; !rows->AtEOF(); rows->MoveNext()) {
    const int photoId = rows->Field(QStringLiteral("PhotoID")).toInt();
    files << catalogue::ThumbFileName(ThePaths, photoId)
          << catalogue::ImageFileName(ThePaths, photoId, rows->Field(QStringLiteral("ImageType")).toString());
  }
  for (const int photoId : group) DeletePhoto(database, photoId);
  transaction.Commit();
  for (const QString& file : files) QFile::remove(file);
}

void DeletePhotos::RemoveGroup(engine::Database& database, Group group) const {
  const controls::Node* folder = Tree.SelectedItem();
  if (folder == nullptr || folder->Parent() == nullptr) return;
  engine::Transaction transaction(database);
  for (const int photoId : group) RemovePhotoLink(database, *folder, photoId);
  transaction.Commit();
}

void DeletePhoto(engine::Database& database, int photoId) {
  for (const char* table : {"tblPhotoLinks", "tblPhotos", "CheckPhotos"}) {
    database.Execute(
        QStringLiteral("DELETE FROM %1 WHERE PhotoID = %2").arg(QLatin1String(table)).arg(photoId));
  }
}

void RemovePhotoLink(engine::Database& database, const controls::Node& folder, int photoId) {
  const QString links = QStringLiteral("FROM tblPhotoLinks WHERE ");
  const QString ofPhoto = QStringLiteral("PhotoID = %1").arg(photoId);
  const auto below = [](const QString& key) { return QStringLiteral("IDNo Like '%1*' AND ").arg(key); };
  database.Execute(QStringLiteral("DELETE ") + links + below(folder.Tag()) + ofPhoto);
  const controls::Node& parent = *folder.Parent();
  const QString belowParent = parent.Index() == 1 ? QString() : below(parent.Tag());
  const auto left = database.OpenRecordset(QStringLiteral("SELECT * ") + links + belowParent + ofPhoto,
                                           engine::dbOpenSnapshot);
  if (left->RecordCount() > 0) return;
  database.Execute(QStringLiteral("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('%1', %2)")
                       .arg(folders::LinkKey(parent.Tag()))
                       .arg(photoId));
}

}  // namespace veldrin::records
