#include "records/new_photo.h"

#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QSysInfo>

#include "base/failure.h"
#include "catalogue/image_store.h"
#include "pictures/picture.h"

namespace veldrin::records {

using base::ResumeNext;

namespace {

void KeepAside(const QString& file) {
  QString aside = file + QStringLiteral(".old");
  for (int number = 2; !desktop::RenameToFree(file, aside); ++number) {
    aside = file + QStringLiteral(".old%1").arg(number);
  }
}

}  // namespace

bool CheckImageFile(const QString& path, int) {
  return !ResumeNext([&] { pictures::LoadPicture(path, [](QSize) { return QSize(0, 0); }); });
}

void NewPhoto::Read() {
  ResumeNext([&] { Date = catalogue::GetFileDate(Source); });
  Copied = ResumeNext([&] { Copy = std::make_unique<desktop::FileCopy>(Source, Temporary); });
  Loaded = !CheckImageFile(Source, PhotoID);
  if (!Loaded) ImageType = QStringLiteral("jpg");
}

void NewPhoto::Flush() {
  if (Copied && Loaded) Copied = ResumeNext([&] { Copy->Flush(); });
  Copy.reset();
}

void NewPhoto::PutInPlace(const catalogue::Paths& paths) {
  if (!Copied || !Loaded || InPlace) return;
  const QString target = catalogue::ImageFileName(paths, PhotoID, ImageType);
  InPlace = Copied = ResumeNext([&] {
    while (!desktop::RenameToFree(Temporary, target)) KeepAside(target);
  });
  // A number that is given out again may have the thumbnail of another picture.
  QFile::remove(catalogue::ThumbFileName(paths, PhotoID));
}

void NewPhoto::TakeBack(const catalogue::Paths& paths) {
  if (!InPlace) return;
  const QString target = catalogue::ImageFileName(paths, PhotoID, ImageType);
  InPlace = !ResumeNext([&] { desktop::RenameToFree(target, Temporary); });
}

void NewPhoto::DropTemporary() const {
  if (!InPlace) QFile::remove(Temporary);
}

QString TemporaryName(const catalogue::Paths& paths, int number) {
  // What two running programs that share an image store can't have in common: one of them holds the lock in
  // TempDir.
  const QByteArray owner = QSysInfo::bootUniqueId() + QSysInfo::machineUniqueId() +
                           QSysInfo::machineHostName().toUtf8() + QByteArray::number(::getuid()) +
                           paths.TempDir.toUtf8();
  const QByteArray mark = QCryptographicHash::hash(owner, QCryptographicHash::Sha1).toHex().left(12);
  return paths.ImageDir + QStringLiteral(".new-%1-%2").arg(QLatin1String(mark)).arg(number);
}

}  // namespace veldrin::records
