#include "records/photo_storing.h"

#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrentMap>
#include <algorithm>
#include <limits>
#include <span>
#include <vector>

#include "base/failure.h"
#include "base/runtime_error.h"
#include "catalogue/image_store.h"
#include "desktop/file_copy.h"
#include "engine/dao/transaction.h"
#include "records/new_photo.h"

namespace veldrin::records {

using base::ResumeNext;
using base::RuntimeError;

namespace {

using Group = std::span<NewPhoto>;

bool IsSameDirectory(const QString& a, const QString& b) {
  struct stat statusA {};
  struct stat statusB {};
  return ::stat(QFile::encodeName(a).constData(), &statusA) == 0 &&
         ::stat(QFile::encodeName(b).constData(), &statusB) == 0 && statusA.st_dev == statusB.st_dev &&
         statusA.st_ino == statusB.st_ino;
}

class BatchWriter {
 public:
  BatchWriter(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch, int first);
  void Run();

 private:
  Group GroupAt(size_t number);
  QFuture<void> ReadFiles(Group group);
  void WriteGroup(Group group);

  template <class Write>
  bool InTransaction(Write&& write);
  bool WriteRows(Group group);
  bool WriteLinks(Group group);
  void TakeBack(Group group);
  QSet<int> TakenNumbers(Group group);
  void AddRow(const NewPhoto& photo);
  void SetTextField(const char* name, const QString& text);
  void RemoveSources(Group group);

  const catalogue::Paths& ThePaths;
  const PhotoBatch& Batch;
  bool MayRemove;
  std::unique_ptr<engine::Database> TheDatabase;
  std::unique_ptr<engine::Recordset> Photos;
  std::unique_ptr<engine::Recordset> Links;
  std::vector<NewPhoto> Files;
  bool Locked = false;
  QThreadPool Pool;  // Last: its end waits for the threads that use the other members.
};

BatchWriter::BatchWriter(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch,
                         int first)
    : ThePaths(paths),
      Batch(batch),
      MayRemove(batch.RemoveSources && !IsSameDirectory(batch.Directory, paths.ImageDir)) {
  TheDatabase = engine.OpenDatabase(paths.WorkFile);
  Photos = TheDatabase->OpenRecordset(QStringLiteral("tblPhotos"));
  Links = TheDatabase->OpenRecordset(QStringLiteral("tblPhotoLinks"));
  // Two groups are on their way at a time.
  const int places = 2 * batch.GroupSize;
  for (int i = 0; i < places; ++i) QFile::remove(TemporaryName(paths, i));  // What a crash left.
  const qint64 room = qint64{std::numeric_limits<int>::max()} - first + 1;
  Files.resize(std::min<qint64>(batch.Names.size(), room));
  for (int i = 0; i < std::ssize(Files); ++i) {
    const QString& name = batch.Names[i];
    Files[i].PhotoID = first + i;
    Files[i].Source = batch.Directory + QLatin1Char('/') + name;
    Files[i].ImageType = catalogue::GetFileExtension(name);
    Files[i].Temporary = TemporaryName(paths, i % places);
  }
  // Threads wait for the disk as well as they compute.
  Pool.setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 2, 4));
}

Group BatchWriter::GroupAt(size_t number) {
  const size_t size = Batch.GroupSize;
  const size_t begin = std::min(number * size, Files.size());
  return Group(Files).subspan(begin, std::min(size, Files.size() - begin));
}

QFuture<void> BatchWriter::ReadFiles(Group group) {
  return QtConcurrent::map(&Pool, group.begin(), group.end(), [](NewPhoto& photo) { photo.Read(); });
}

void BatchWriter::Run() {
  QFuture<void> files = ReadFiles(GroupAt(0));
  for (size_t number = 0; !GroupAt(number).empty(); ++number) {
    files.waitForFinished();
    files = ReadFiles(GroupAt(number + 1));
    WriteGroup(GroupAt(number));
  }
}

void BatchWriter::WriteGroup(Group group) {
  Locked = false;
  for (NewPhoto& photo : group) photo.Flush();
  if (!WriteRows(group)) {
    // Locked by someone else: what holds up the group holds up each of its rows.
    for (size_t i = 0; i < group.size() && !Locked; ++i) WriteRows(group.subspan(i, 1));
  }
  if (MayRemove) RemoveSources(group);
  if (!WriteLinks(group)) {
    for (size_t i = 0; i < group.size() && !Locked; ++i) WriteLinks(group.subspan(i, 1));
  }
  for (const NewPhoto& photo : group) photo.DropTemporary();
}

template <class Write>
bool BatchWriter::InTransaction(Write&& write) {
  try {
    engine::Transaction transaction(*TheDatabase);
    write();
    transaction.Commit();
    return true;
  } catch (const RuntimeError& error) {
    Locked = error.Number() == base::errLocked;
    return false;
  }
}

// The transaction keeps other machines out from the look at the numbers to the end, so that two that were
// given the same number don't write the same file. The names are on the disk before the rows that speak of
// them.
bool BatchWriter::WriteRows(Group group) {
  QSet<int> taken;
  const bool written = InTransaction([&] {
    taken = TakenNumbers(group);
    for (NewPhoto& photo : group) {
      if (taken.contains(photo.PhotoID)) continue;
      photo.PutInPlace(ThePaths);
      AddRow(photo);
    }
    desktop::SyncDirectory(ThePaths.ImageDir);
  });
  if (!written) {
    TakeBack(group);
    return false;
  }
  for (NewPhoto& photo : group) photo.HasRow = !taken.contains(photo.PhotoID);
  return true;
}

// Of a group that failed the files go back under their temporary names, unless their rows are there in spite
// of the error. Where the catalogue can't be asked they stay; the next photo of that number puts them aside.
void BatchWriter::TakeBack(Group group) {
  const auto isInPlace = [](const NewPhoto& photo) { return photo.InPlace; };
  if (std::none_of(group.begin(), group.end(), isInPlace)) return;
  ResumeNext([&] {
    // Nothing is written: it keeps the others out while the files go back.
    const engine::Transaction transaction(*TheDatabase);
    const QSet<int> taken = TakenNumbers(group);
    for (NewPhoto& photo : group) {
      if (!taken.contains(photo.PhotoID)) photo.TakeBack(ThePaths);
    }
  });
}

QSet<int> BatchWriter::TakenNumbers(Group group) {
  const auto rows = TheDatabase->OpenRecordset(
      QStringLiteral("SELECT PhotoID FROM tblPhotos WHERE PhotoID >= %1 AND PhotoID <= %2")
          .arg(group.front().PhotoID)
          .arg(group.back().PhotoID),
      engine::dbOpenSnapshot);
  QSet<int> numbers;
  for (; !rows->AtEOF(); rows->MoveNext()) numbers.insert(rows->Field(QStringLiteral("PhotoID")).toInt());
  return numbers;
}

void BatchWriter::AddRow(const NewPhoto& photo) {
  Photos->AddNew();
  Photos->SetField(QStringLiteral("PhotoID"), photo.PhotoID);
  // A type too long for its field leaves the field unset.
  ResumeNext([&] { Photos->SetField(QStringLiteral("ImageType"), photo.ImageType); });
  SetTextField("Title", Batch.Title);
  SetTextField("Description", Batch.Description);
  SetTextField("MadeBy", Batch.MadeBy);
  if (photo.Date.isValid()) {
    Photos->SetField(QStringLiteral("CreateDate"), photo.Date);
    Photos->SetField(QStringLiteral("LastModifyDate"), photo.Date);
  }
  Photos->Update();
}

void BatchWriter::SetTextField(const char* name, const QString& text) {
  if (!text.isEmpty()) ResumeNext([&] { Photos->SetField(QLatin1String(name), text); });
}

void BatchWriter::RemoveSources(Group group) {
  TheDatabase->Settle();
  for (const NewPhoto& photo : group) {
    if (photo.HasRow && photo.Copied) QFile::remove(photo.Source);
  }
}

bool BatchWriter::WriteLinks(Group group) {
  const auto hasRow = [](const NewPhoto& photo) { return photo.HasRow; };
  if (std::none_of(group.begin(), group.end(), hasRow)) return true;
  return InTransaction([&] {
    for (const NewPhoto& photo : group) {
      if (!photo.HasRow) continue;
      Links->AddNew();
      Links->SetField(QStringLiteral("IDNo"), Batch.LinkKey);
      Links->SetField(QStringLiteral("PhotoID"), photo.PhotoID);
      Links->Update();
    }
  });
}

}  // namespace

int GetNextPhotoID(engine::DBEngine& engine, const catalogue::Paths& paths) {
  const auto database = engine.OpenDatabase(paths.WorkFile);
  const auto highest = database->OpenRecordset(
      QStringLiteral("SELECT Max(tblPhotos.PhotoID) As ID FROM tblPhotos"), engine::dbOpenSnapshot);
  const engine::Value id = highest->Field(QStringLiteral("ID"));
  if (engine::IsNull(id)) return 1;
  if (id.toInt() == std::numeric_limits<int>::max())
    throw RuntimeError(base::errOverflow, QStringLiteral("Overflow"));
  return id.toInt() + 1;
}

int StorePhotos(const catalogue::Paths& paths, engine::DBEngine& engine, const PhotoBatch& batch) {
  int first = 0;
  ResumeNext([&] {
    first = GetNextPhotoID(engine, paths);
    BatchWriter(paths, engine, batch, first).Run();
  });
  return first;
}

}  // namespace veldrin::records
