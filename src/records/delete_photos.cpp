#include "records/delete_photos.h"

#include <QFile>
#include <algorithm>

#include "catalogue/image_store.h"
#include "folders/folder_keys.h"
#include "platform/busy_pointer.h"
#include "platform/failure.h"
#include "platform/msg_box.h"

namespace veldrin::records {

using platform::ResumeNext;

namespace {

// Photos whose rows are written in one transaction.
constexpr size_t GroupLength = 64;

template <class Write>
void InTransaction(platform::Database& database, Write&& write) {
  const bool written = ResumeNext([&] {
    database.BeginTrans();
    write();
    database.CommitTrans();
  });
  if (!written) ResumeNext([&] { database.Rollback(); });
}

}  // namespace

bool DeletePhotos::Ask(const QString& question) const {
  return platform::MsgBox(&Window, question,
                          platform::vbYesNo | platform::vbQuestion | platform::vbDefaultButton2,
                          QStringLiteral("Delete Record(s)")) == platform::vbYes;
}

void DeletePhotos::RecordDel_Click() {
  if (Data1.RecordCount() == 0) return;
  if (Ask(QStringLiteral("This option will delete the data and image(s) of selected record(s) from the "
                         "database, can't be recovered!\r"
                         "Are you sure to delete the selected record(s)?"))) {
    WriteInGroups(&DeletePhotos::DeleteGroup);
  }
}

void DeletePhotos::RecordRmv_Click() {
  if (Data1.RecordCount() == 0) return;
  if (Ask(QStringLiteral("This option will remove the data and image(s) of selected record(s) from the "
                         "current folder,\r"
                         "but it/they will not be deleted from the database. It/they could be in another "
                         "folder or unorganized.\r"
                         "Are you sure to remove the selected record(s) from the folder?"))) {
    WriteInGroups(&DeletePhotos::RemoveGroup);
  }
}

DeletePhotos::Photo DeletePhotos::CurrentPhoto() const {
  return {Data1.Field(QStringLiteral("PhotoID")).toInt(),
          Data1.Field(QStringLiteral("ImageType")).toString()};
}

// A row that has gone meanwhile has nothing to delete.
std::vector<DeletePhotos::Photo> DeletePhotos::AffectedPhotos() {
  std::vector<Photo> photos;
  const int count = Data1.SelBookmarks.Count();
  if (count == 0 || Views.FormViewIsShown()) {
    ResumeNext([&] { photos.push_back(CurrentPhoto()); });
    return photos;
  }
  const catalogue::RepositionGuard guard(Data1);
  for (int i = 0; i < count; ++i) {
    ResumeNext([&] {
      Data1.SetBookmark(Data1.SelBookmarks[i]);
      photos.push_back(CurrentPhoto());
    });
  }
  return photos;
}

void DeletePhotos::WriteInGroups(WriteGroup write) {
  const platform::BusyPointer busy;
  const std::vector<Photo> photos = AffectedPhotos();
  ResumeNext([&] {
    const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
    for (size_t first = 0; first < photos.size(); first += GroupLength) {
      const size_t length = std::min(GroupLength, photos.size() - first);
      (this->*write)(*database, std::span(photos).subspan(first, length));
    }
  });
  Source.SetRecordSource();
  Views.ShowFolderRecords();
}

// The rows first: an image that is left without its row does no harm, a row without its image would.
void DeletePhotos::DeleteGroup(platform::Database& database, std::span<const Photo> group) const {
  InTransaction(database, [&] {
    for (const Photo& photo : group) {
      for (const char* table : {"tblPhotoLinks", "tblPhotos"}) {
        database.Execute(
            QStringLiteral("DELETE FROM %1 WHERE PhotoID = %2").arg(QLatin1String(table)).arg(photo.PhotoID));
      }
    }
  });
  for (const Photo& photo : group) {
    QFile::remove(catalogue::ThumbFileName(ThePaths, photo.PhotoID));
    QFile::remove(catalogue::ImageFileName(ThePaths, photo.PhotoID, photo.ImageType));
  }
}

void DeletePhotos::RemoveGroup(platform::Database& database, std::span<const Photo> group) const {
  const platform::Node* folder = Tree.SelectedItem();
  if (folder == nullptr || folder->Parent() == nullptr) return;
  InTransaction(database, [&] {
    for (const Photo& photo : group) RemovePhotoLink(database, *folder, photo.PhotoID);
  });
}

void RemovePhotoLink(platform::Database& database, const platform::Node& folder, int photoId) {
  const QString links = QStringLiteral("FROM tblPhotoLinks WHERE ");
  const QString ofPhoto = QStringLiteral("PhotoID = %1").arg(photoId);
  const auto below = [](const QString& key) { return QStringLiteral("IDNo Like '%1*' AND ").arg(key); };
  database.Execute(QStringLiteral("DELETE ") + links + below(folder.Tag()) + ofPhoto);
  const platform::Node& parent = *folder.Parent();
  const QString belowParent = parent.Index() == 1 ? QString() : below(parent.Tag());
  const auto left = database.OpenRecordset(QStringLiteral("SELECT * ") + links + belowParent + ofPhoto,
                                           platform::dbOpenSnapshot);
  if (left->RecordCount() > 0) return;
  database.Execute(QStringLiteral("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('%1', %2)")
                       .arg(folders::LinkKey(parent.Tag()))
                       .arg(photoId));
}

}  // namespace veldrin::records
