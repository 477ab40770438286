#include "records/new_photo.h"

#include <QFile>
#include <QFileInfo>
#include <new>

#include "base/failure.h"
#include "base/work_report.h"
#include "catalogue/image_store.h"
#include "pictures/picture.h"

namespace veldrin::records {

using base::ResumeNext;

namespace {

constexpr qsizetype TypeLength = 3;  // of the column ImageType

QString KeepAside(const QString& file) {
  QString aside = file + QStringLiteral(".old");
  for (int number = 2; !desktop::RenameToFree(file, aside); ++number) {
    aside = file + QStringLiteral(".old%1").arg(number);
  }
  return aside;
}

}  // namespace

QString TypeToStore(const QString& name) {
  const QString type = catalogue::GetFileExtension(name);
  return type.size() <= TypeLength ? type : QFileInfo(name).suffix().left(TypeLength);
}

void NewPhoto::Read() {
  IsRead = true;
  try {
    ResumeNext([&] { Date = catalogue::GetFileDate(Source); });
    Copy = std::make_unique<desktop::FileCopy>(Source, Temporary);
    ReadSource = Copy->Source();
    Identity = base::IdentityOf(Temporary);
    IsPicture = pictures::IsPicture(Temporary);
    ImageType = IsPicture ? TypeToStore(Name) : QStringLiteral("jpg");
  } catch (const base::RuntimeError& error) {
    Failure = base::ReasonOf(error);
  } catch (const std::bad_alloc&) {
    Failure = QStringLiteral("Out of memory");
  }
}

void NewPhoto::Flush() {
  if (!Copy) return;
  if (IsPicture && Failure.isEmpty()) {
    try {
      Copy->Flush();
    } catch (const base::RuntimeError& error) {
      Failure = base::ReasonOf(error);
    }
  }
  Copy.reset();
}

QString NewPhoto::StoredName() const {
  return IsPicture ? QStringLiteral("%1.%2").arg(PhotoID).arg(ImageType) : QString();
}

void NewPhoto::PutInPlace(const catalogue::Paths& paths) {
  // A number that is given out again may have the thumbnail of another picture.
  QFile::remove(catalogue::ThumbFileName(paths, PhotoID));
  if (!IsPicture) return;
  const QString target = catalogue::ImageFileName(paths, PhotoID, ImageType);
  if (base::IdentityOf(Temporary) != Identity)
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(Temporary));
  while (!desktop::RenameToFree(Temporary, target)) Aside = KeepAside(target);
  InPlace = true;
}

void NewPhoto::TakeBack(const catalogue::Paths& paths) {
  if (!InPlace) return;
  const QString target = catalogue::ImageFileName(paths, PhotoID, ImageType);
  if (base::IdentityOf(target) != Identity) return;
  InPlace = !ResumeNext([&] {
    desktop::RenameToFree(target, Temporary);
    if (!Aside.isEmpty()) desktop::RenameToFree(std::exchange(Aside, QString()), target);
  });
}

// What was written to it since is nowhere else.
void NewPhoto::RemoveSource() {
  try {
    desktop::RemoveUnchanged(Source, ReadSource.value_or(base::FileState()));
  } catch (const base::RuntimeError& error) {
    Failure = QStringLiteral("stored, but the file stays: ") + base::ReasonOf(error);
  }
}

void NewPhoto::DropTemporary() const {
  if (!InPlace) QFile::remove(Temporary);
}

}  // namespace veldrin::records
