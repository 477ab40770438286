#include "browse/external_viewing.h"

#include <QFile>

#include "catalogue/image_store.h"
#include "platform/failure.h"

namespace veldrin::browse {

using platform::ResumeNext;

namespace {

// A file that has gone has the empty date, which differs from any note.
QDateTime DateOfFile(const QString& path) {
  QDateTime date(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC);
  ResumeNext([&] { date = catalogue::GetFileDate(path); });
  return date;
}

}  // namespace

void RefreshCheckedPhoto(platform::Database& database, const catalogue::Paths& paths, int photoId) {
  std::unique_ptr<platform::Recordset> note;
  ResumeNext([&] {
    note =
        database.OpenRecordset(QStringLiteral("SELECT * FROM CheckPhotos WHERE PhotoID = %1").arg(photoId));
    if (note->RecordCount() == 0) note.reset();
  });
  if (!note) return;
  ResumeNext([&] {
    const QString imageType = note->Field(QStringLiteral("ImageType")).toString();
    const QDateTime fileDate = DateOfFile(catalogue::ImageFileName(paths, photoId, imageType));
    if (note->Field(QStringLiteral("LastModifyDate")).toDateTime() == fileDate) return;
    QFile::remove(catalogue::ThumbFileName(paths, photoId));
    database.Execute(QStringLiteral("UPDATE tblPhotos SET LastModifyDate = #%1# WHERE PhotoID = %2")
                         .arg(platform::DateToStore(fileDate))
                         .arg(photoId));
  });
  ResumeNext([&] { note->Delete(); });
}

}  // namespace veldrin::browse
