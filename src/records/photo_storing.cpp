#include "records/photo_storing.h"

#include <QFileInfo>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrentMap>
#include <algorithm>
#include <atomic>
#include <limits>
#include <span>

#include "base/failure.h"
#include "base/work_report.h"
#include "catalogue/image_store.h"
#include "catalogue/staging.h"
#include "engine/dao/transaction.h"
#include "records/new_photo.h"

namespace veldrin::records {

using base::ResumeNext;
using base::RuntimeError;

namespace {

using Group = std::span<NewPhoto>;

// No catalogue's pictures go into another one.
bool IsOfACatalogue(const catalogue::Paths& paths, const QString& directory) {
  return catalogue::IsOwnDirectory(paths, directory) ||
         QFileInfo::exists(directory + QStringLiteral("/../Photos.mdb"));
}

bool CanBeStored(const NewPhoto& photo) { return photo.IsRead && !photo.HasRow && photo.Failure.isEmpty(); }

class BatchWriter {
 public:
  BatchWriter(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch,
              std::vector<NewPhoto>& files, controls::Progress* progress);
  void Run();

 private:
  Group GroupAt(size_t number);
  QFuture<void> ReadFiles(Group group);
  void Await(const QFuture<void>& files);
  bool IsStopped() const { return Bar != nullptr && Bar->IsStopped(); }
  void WriteGroup(Group group);
  void WriteFlushed(Group group);
  bool WriteRows(Group group);
  void TakeBack(Group group);
  void AddRow(const NewPhoto& photo);
  void AddLink(const NewPhoto& photo);
  bool IsStored(const NewPhoto& photo);
  void SetTextField(const char* name, const QString& text);
  void RemoveSources(Group group);

  const catalogue::Paths& ThePaths;
  const PhotoBatch& Batch;
  const bool MayRemove;
  std::vector<NewPhoto>& Files;
  controls::Progress* const Bar;
  catalogue::Staging TheStaging;
  std::unique_ptr<engine::Database> TheDatabase;
  std::unique_ptr<engine::Recordset> Photos;
  std::unique_ptr<engine::Recordset> Links;
  std::atomic<int> Read = 0;
  QString Refusal;         ///< of the last group; empty where it was stored
  bool IsRefused = false;  ///< what held up a group holds up all further ones
  QThreadPool Pool;        // Last: its end waits for the threads that use the other members.
};

BatchWriter::BatchWriter(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch,
                         std::vector<NewPhoto>& files, controls::Progress* progress)
    : ThePaths(paths),
      Batch(batch),
      MayRemove(batch.RemoveSources && !IsOfACatalogue(paths, batch.Directory)),
      Files(files),
      Bar(progress),
      TheStaging(paths) {
  TheDatabase = engine.OpenDatabase(paths.WorkFile);
  Photos = TheDatabase->OpenRecordset(QStringLiteral("tblPhotos"));
  Links = TheDatabase->OpenRecordset(QStringLiteral("tblPhotoLinks"));
  const int places = 2 * batch.GroupSize;  // Two groups are on their way at a time.
  for (int i = 0; i < std::ssize(Files); ++i)
    Files[i].Temporary = TheStaging.PlaceOf(i % places, Files[i].Name);
  // Threads wait for the disk as well as they compute.
  Pool.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 2, 4));
}

Group BatchWriter::GroupAt(size_t number) {
  const size_t size = Batch.GroupSize;
  const size_t begin = std::min(number * size, Files.size());
  return Group(Files).subspan(begin, std::min(size, Files.size() - begin));
}

QFuture<void> BatchWriter::ReadFiles(Group group) {
  return QtConcurrent::map(&Pool, group.begin(), group.end(), [this](NewPhoto& photo) {
    if (IsStopped()) return;
    photo.Read();
    ++Read;
  });
}

void BatchWriter::Await(const QFuture<void>& files) {
  if (Bar == nullptr) return QFuture<void>(files).waitForFinished();
  Bar->Await(files, [this] { Bar->Step(Read.load()); });
}

// While one group's rows are written the next one's files are copied.
void BatchWriter::Run() {
  QFuture<void> files = ReadFiles(GroupAt(0));
  for (size_t number = 0; !GroupAt(number).empty(); ++number) {
    Await(files);
    files = IsRefused ? QFuture<void>() : ReadFiles(GroupAt(number + 1));
    WriteGroup(GroupAt(number));
  }
}

void BatchWriter::WriteGroup(Group group) {
  Await(QtConcurrent::map(&Pool, group.begin(), group.end(), [](NewPhoto& photo) { photo.Flush(); }));
  const auto write = [this, group] { WriteFlushed(group); };
  Bar == nullptr ? write() : Bar->Run(write);
}

// In another thread: what waits for the disk holds no window. Where a group finds no room, fewer of its
// photos may.
void BatchWriter::WriteFlushed(Group group) {
  if (!IsRefused && !WriteRows(group)) {
    for (size_t i = 0; i < group.size() && group.size() > 1 && !IsRefused; ++i)
      WriteRows(group.subspan(i, 1));
  }
  for (NewPhoto& photo : group) {
    const bool isBegun = photo.IsRead || !IsStopped();
    if (isBegun && !photo.HasRow && photo.Failure.isEmpty()) photo.Failure = Refusal;
    photo.DropTemporary();
  }
  if (MayRemove) RemoveSources(group);
}

// The transaction keeps other machines out from the look at the numbers to the end, so that two don't give
// the same one. No file is touched before the rows have proved to fit, and the names are on the disk before
// the rows are.
bool BatchWriter::WriteRows(Group group) {
  if (std::none_of(group.begin(), group.end(), CanBeStored)) return true;
  try {
    engine::Transaction transaction(*TheDatabase);
    if (Batch.FolderIsAsShown && !Batch.FolderIsAsShown(*TheDatabase))
      throw RuntimeError(base::errDataChanged, QStringLiteral("The folder was changed by another machine."));
    int next = GetNextPhotoID(*TheDatabase);
    std::vector<catalogue::Staging::Unfinished> unfinished;
    for (NewPhoto& photo : group) {
      if (!CanBeStored(photo)) continue;
      if (next <= 0) throw RuntimeError(base::errOverflow, QStringLiteral("Overflow"));
      photo.PhotoID = next;
      next = next == std::numeric_limits<int>::max() ? 0 : next + 1;
      if (photo.IsPicture) unfinished.push_back({photo.StoredName(), photo.Temporary});
    }
    for (const NewPhoto& photo : group) {
      if (!CanBeStored(photo)) continue;
      AddRow(photo);
      AddLink(photo);
    }
    TheStaging.NoteUnfinished(unfinished);
    for (NewPhoto& photo : group) {
      if (CanBeStored(photo)) photo.PutInPlace(ThePaths);
    }
    desktop::SyncDirectory(ThePaths.ImageDir);
    transaction.Commit();
  } catch (const RuntimeError& error) {
    Refusal = base::ReasonOf(error);
    const int number = error.Number();
    IsRefused = number == base::errLocked || number == base::errReadOnly || number == base::errDataChanged;
    TakeBack(group);
    return false;
  }
  for (NewPhoto& photo : group) photo.HasRow |= CanBeStored(photo);
  return true;
}

// Of a group that failed the files go back under their temporary names, unless their rows are there in spite
// of the error. Where the catalogue can't be asked they stay, and the next start looks again.
void BatchWriter::TakeBack(Group group) {
  if (std::none_of(group.begin(), group.end(), [](const NewPhoto& photo) { return photo.InPlace; })) return;
  const bool asked = ResumeNext([&] {
    // Nothing is written: it keeps the others out while the files go back.
    const engine::Transaction transaction(*TheDatabase);
    for (NewPhoto& photo : group) {
      if (photo.PhotoID == 0 || !CanBeStored(photo)) continue;
      photo.HasRow = IsStored(photo);
      if (!photo.HasRow) photo.TakeBack(ThePaths);
    }
  });
  if (!asked && std::any_of(group.begin(), group.end(), [](const NewPhoto& photo) { return photo.InPlace; }))
    TheStaging.Keep();
}

// Another machine may have given the number to a photo of its own since.
bool BatchWriter::IsStored(const NewPhoto& photo) {
  const auto row = TheDatabase->OpenRecordset(
      QStringLiteral("SELECT ImageType, CreateDate FROM tblPhotos WHERE PhotoID = %1").arg(photo.PhotoID),
      engine::dbOpenSnapshot);
  return row->RecordCount() == 1 && row->Field(QStringLiteral("ImageType")).toString() == photo.ImageType &&
         row->Field(QStringLiteral("CreateDate")).toDateTime() == photo.Date;
}

void BatchWriter::AddRow(const NewPhoto& photo) {
  Photos->AddNew();
  Photos->SetField(QStringLiteral("PhotoID"), photo.PhotoID);
  Photos->SetField(QStringLiteral("ImageType"), photo.ImageType);
  SetTextField("Title", Batch.Title);
  SetTextField("Description", Batch.Description);
  SetTextField("MadeBy", Batch.MadeBy);
  if (photo.Date.isValid()) {
    Photos->SetField(QStringLiteral("CreateDate"), photo.Date);
    Photos->SetField(QStringLiteral("LastModifyDate"), photo.Date);
  }
  Photos->Update();
}

void BatchWriter::AddLink(const NewPhoto& photo) {
  Links->AddNew();
  Links->SetField(QStringLiteral("IDNo"), Batch.LinkKey);
  Links->SetField(QStringLiteral("PhotoID"), photo.PhotoID);
  Links->Update();
}

void BatchWriter::SetTextField(const char* name, const QString& text) {
  if (!text.isEmpty()) ResumeNext([&] { Photos->SetField(QLatin1String(name), text); });
}

void BatchWriter::RemoveSources(Group group) {
  const auto mayGo = [](const NewPhoto& photo) { return photo.HasRow && photo.InPlace; };
  if (std::none_of(group.begin(), group.end(), mayGo)) return;
  QString unsettled;
  try {
    TheDatabase->Settle();
  } catch (const RuntimeError& error) {
    unsettled = QStringLiteral("stored, but the file stays: ") + base::ReasonOf(error);
  }
  for (NewPhoto& photo : group) {
    if (!mayGo(photo)) continue;
    unsettled.isEmpty() ? photo.RemoveSource() : void(photo.Failure = unsettled);
  }
}

StoredFile OutcomeOf(const NewPhoto& photo) {
  if (!photo.HasRow) return {photo.Name, 0, photo.Failure};
  if (photo.IsPicture) return {photo.Name, photo.PhotoID, photo.Failure};
  return {photo.Name, photo.PhotoID, QStringLiteral("no picture: stored without a file")};
}

}  // namespace

int GetNextPhotoID(engine::Database& database) {
  const auto highest = database.OpenRecordset(
      QStringLiteral("SELECT Max(tblPhotos.PhotoID) As ID FROM tblPhotos"), engine::dbOpenSnapshot);
  const engine::Value id = highest->Field(QStringLiteral("ID"));
  if (engine::IsNull(id)) return 1;
  if (id.toInt() == std::numeric_limits<int>::max())
    throw RuntimeError(base::errOverflow, QStringLiteral("Overflow"));
  return id.toInt() + 1;
}

std::vector<StoredFile> StorePhotos(const catalogue::Paths& paths, engine::DBEngine& engine,
                                    const PhotoBatch& batch, controls::Progress* progress) {
  std::vector<NewPhoto> files(static_cast<size_t>(batch.Names.size()));
  for (size_t i = 0; i < files.size(); ++i) {
    files[i].Name = batch.Names[static_cast<qsizetype>(i)];
    files[i].Source = batch.Directory + QLatin1Char('/') + files[i].Name;
  }
  QString refusal;
  try {
    BatchWriter(paths, engine, batch, files, progress).Run();
  } catch (const RuntimeError& error) {
    refusal = base::ReasonOf(error);
  }
  std::vector<StoredFile> outcomes;
  for (NewPhoto& photo : files) {
    if (!photo.HasRow && photo.Failure.isEmpty()) photo.Failure = refusal;
    outcomes.push_back(OutcomeOf(photo));
  }
  return outcomes;
}

}  // namespace veldrin::records
