#include "records/delete_photos.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <optional>

#include "base/failure.h"
#include "catalogue/image_store.h"
#include "controls/busy_pointer.h"
#include "controls/error_box.h"
#include "controls/msg_box.h"
#include "desktop/file_copy.h"
#include "engine/dao/transaction.h"
#include "folders/change_boxes.h"
#include "folders/folder_keys.h"
#include "folders/folder_rows.h"

namespace veldrin::records {

using base::ResumeNext;

namespace {

// Photos whose rows are written in one transaction.
constexpr size_t GroupLength = 128;

// The photos' rows, their links and the notes of their hand-over, by which later photos of their numbers
// would be taken for changed.
void DeletePhotoRows(engine::Database& database, const std::vector<catalogue::CheckedPhotos::Photo>& photos) {
  if (photos.empty()) return;
  QStringList numbers;
  for (const auto& photo : photos) numbers << QString::number(photo.PhotoID);
  for (const char* table : {"tblPhotoLinks", "tblPhotos", "CheckPhotos"}) {
    database.Execute(QStringLiteral("DELETE FROM %1 WHERE PhotoID IN (%2)")
                         .arg(QLatin1String(table), numbers.join(QLatin1Char(','))));
  }
}

// Which may be gone already.
bool RemoveFile(const QString& file) { return QFile::remove(file) || !QFileInfo::exists(file); }

}  // namespace

// The photos are taken before the question, which is about them. None where the answer is No.
catalogue::Choice DeletePhotos::Ask(const QString& question) const {
  catalogue::Choice choice = Chosen();
  if (choice.Photos.empty()) return {};
  // Without a look another photo of the number would be taken for it.
  bool looked = false;
  controls::TrapWithBox(&Window, [&] {
    NoteLooks(*Engine.OpenDatabase(ThePaths.WorkFile), choice.Photos);
    looked = true;
  });
  if (!looked) return {};
  const int answer = controls::MsgBox(&Window, question,
                                      controls::vbYesNo | controls::vbQuestion | controls::vbDefaultButton2,
                                      QStringLiteral("Delete Record(s)"));
  return answer == controls::vbYes ? choice : catalogue::Choice();
}

void DeletePhotos::RecordDel_Click() {
  const catalogue::Choice choice =
      Ask(QStringLiteral("This option will delete the data and image(s) of selected record(s) from the "
                         "database, can't be recovered!\r"
                         "Are you sure to delete the selected record(s)?"));
  if (choice.Photos.empty()) return;
  std::optional<catalogue::Staging> staging;
  WriteInGroups(choice, QStringLiteral("Deleting Photos...."), QStringLiteral("deleted"),
                [&](engine::Database& database, Group group, const Aside& aside) {
                  if (!staging) ResumeNext([&] { staging.emplace(ThePaths); });
                  DeleteGroup(database, group, staging ? &*staging : nullptr, aside);
                  return true;
                });
}

void DeletePhotos::RecordRmv_Click() {
  const catalogue::Choice choice =
      Ask(QStringLiteral("This option will remove the data and image(s) of selected record(s) from the "
                         "current folder,\r"
                         "but it/they will not be deleted from the database. It/they could be in another "
                         "folder or unorganized.\r"
                         "Are you sure to remove the selected record(s) from the folder?"));
  const controls::Node* folder = Tree.SelectedItem();
  const QString deed = QStringLiteral("removed from ") + folder->Text();
  WriteInGroups(choice, QStringLiteral("Removing Photos...."), deed,
                [this, folder](engine::Database& database, Group group, const Aside& aside) {
                  bool asShown = false;
                  aside([&] { asShown = RemoveGroup(database, group, *folder); });
                  return asShown;
                });
}

void DeletePhotos::WriteInGroups(const catalogue::Choice& choice, const QString& caption, const QString& deed,
                                 const Write& write) {
  if (choice.Photos.empty()) return;
  Report = {QStringLiteral("photos"), deed, 0, {}};
  Others.clear();
  bool folderChanged = false;
  {
    const controls::BusyPointer busy;
    folderChanged = !WriteAll(choice.Photos, caption, write);
    // Where nothing was written the marks stay, for another try.
    if (Report.Done > 0 || Report.IsAllDone()) Source.SetRecordSource(Report);
  }
  if (folderChanged) folders::TellFolderChanged(&Window);
  folders::TellPhotosChanged(&Window, Others);
  Tell(Report);
}

// At the first group that can't be written it ends: the others would wait as long.
bool DeletePhotos::WriteAll(Group photos, const QString& caption, const Write& write) {
  controls::Progress progress(Work, caption, static_cast<int>(photos.size()));
  size_t first = 0;
  try {
    const auto database = Engine.OpenDatabase(ThePaths.WorkFile);
    for (; first < photos.size(); first += GroupLength) {
      Report.Stopped = !progress.Step(static_cast<int>(first));
      if (Report.Stopped) return true;
      const Group group = photos.subspan(first, std::min(GroupLength, photos.size() - first));
      if (!write(*database, group, [&](const auto& work) { progress.Run(work); })) return false;
    }
  } catch (const base::RuntimeError& error) {
    for (const catalogue::ChosenPhoto& photo : photos.subspan(first))
      Report.Failures.push_back({NameOf(photo), base::ReasonOf(error)});
  }
  return true;
}

// The rows first: a row without its image would be worse than an image that is left without its row. Those
// are noted before, so that a kill leaves none for ever; where they can't be noted, as on a full disk, the
// user may want room all the more.
void DeletePhotos::DeleteGroup(engine::Database& database, Group group, catalogue::Staging* staging,
                               const Aside& aside) {
  catalogue::CheckedPhotos checked;
  bool noted = false;
  aside([&] { noted = DeleteRows(database, group, staging, checked); });
  std::vector<int> deleted;
  for (const auto& photo : checked.Same) deleted.push_back(photo.PhotoID);
  Q_EMIT Deleted(deleted);
  aside([&] {
    if (!RemoveFiles(database, checked.Same, noted) && staging != nullptr) staging->Keep();
  });
}

// Whether the files are noted.
bool DeletePhotos::DeleteRows(engine::Database& database, Group group, catalogue::Staging* staging,
                              catalogue::CheckedPhotos& checked) {
  engine::Transaction transaction(database);
  checked = CheckChosen(database, group);
  std::vector<catalogue::Staging::Unfinished> unfinished;
  for (const auto& photo : checked.Same)
    unfinished.push_back({StoredName(photo), ThePaths.ImageDir + StoredName(photo)});
  const bool noted = staging != nullptr && ResumeNext([&] { staging->NoteUnfinished(unfinished); });
  DeletePhotoRows(database, checked.Same);
  transaction.Commit();
  Others.insert(Others.end(), checked.Changed.begin(), checked.Changed.end());
  Report.Done += static_cast<int>(checked.Same.size());
  return noted;
}

// Nobody can store a photo meanwhile. Before, another machine may have stored one under a number that has
// become free: those files are its own. They are gone for good before the next number is given out. What
// can't be removed now the next start tries again.
bool DeletePhotos::RemoveFiles(engine::Database& database, const Photos& photos, bool noted) try {
  // A power cut must not bring the rows back without their images.
  database.Settle();
  const engine::Transaction transaction(database);
  std::vector<catalogue::ChosenPhoto> numbers;
  for (const auto& photo : photos) numbers.push_back({photo.PhotoID, {}});
  const std::vector<int> free = CheckChosen(database, numbers).Gone;
  const QSet<int> mayGo(free.begin(), free.end());
  bool all = true;
  for (const auto& photo : photos) {
    if (!mayGo.contains(photo.PhotoID)) continue;
    const bool isRemoved = RemoveFile(ThePaths.ImageDir + StoredName(photo));
    // Behind the image, or one that is being made of it could come after.
    QFile::remove(catalogue::ThumbFileName(ThePaths, photo.PhotoID));
    if (isRemoved) continue;
    all = false;
    Report.Failures.push_back(
        {StoredName(photo), QStringLiteral("deleted, but its file could not be removed")});
  }
  return ResumeNext([&] { desktop::SyncDirectory(ThePaths.ImageDir); }) && all;
} catch (const base::RuntimeError& error) {
  const QString reason = (noted ? QStringLiteral("deleted, but its file goes at the next start: ")
                                : QStringLiteral("deleted, but its file could not be removed: ")) +
                         base::ReasonOf(error);
  for (const auto& photo : photos) Report.Failures.push_back({StoredName(photo), reason});
  return false;
}

bool DeletePhotos::RemoveGroup(engine::Database& database, Group group, const controls::Node& folder) {
  if (folder.Parent() == nullptr) return true;
  engine::Transaction transaction(database);
  if (!folders::RowIsAsShown(database, folder)) return false;
  const catalogue::CheckedPhotos checked = CheckChosen(database, group);
  for (const auto& photo : checked.Same) RemovePhotoLink(database, folder, photo.PhotoID);
  transaction.Commit();
  Report.Done += static_cast<int>(checked.Same.size());
  const std::vector<int> others = checked.Others();
  Others.insert(Others.end(), others.begin(), others.end());
  return true;
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
