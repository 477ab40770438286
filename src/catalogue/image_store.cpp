#include "catalogue/image_store.h"

#include <QFile>
#include <QFileInfo>

#include "base/failure.h"
#include "base/file_identity.h"
#include "base/runtime_error.h"

namespace veldrin::catalogue {

QString ImageName(int photoId, const QString& imageType) {
  const bool leadsAway = imageType.contains(QLatin1Char('/')) || imageType.contains(QChar::Null);
  return QString::number(photoId) + QLatin1Char('.') + (leadsAway ? QStringLiteral("(none)") : imageType);
}

QString ImageFileName(const Paths& paths, int photoId, const QString& imageType) {
  return paths.ImageDir + ImageName(photoId, imageType);
}

QString ImageFileAt(RecordList& list, const Paths& paths, int position) {
  if (position < 0 || position >= list.RecordCount()) return {};
  const ListRows row = list.ReadForImage(position);
  if (!row.IsThere(0)) return {};
  return ImageFileName(paths, list.BookmarkAt(position),
                       row.Field(0, QStringLiteral("ImageType")).toString());
}

QString ThumbFileName(const Paths& paths, int photoId) {
  return paths.ThumbDir + QString::number(photoId) + QStringLiteral("t.bmp");
}

// While the image is read the photo may be deleted, or changed by another program; its number may be given to
// another one. What was read of it then stands nowhere.
pictures::Picture CreateThumbnail(const Paths& paths, int photoId, const QString& imageType,
                                  double pixelRatio) {
  constexpr int most = 3;
  const QString file = ImageFileName(paths, photoId, imageType);
  for (int attempt = 1; attempt <= most; ++attempt) {
    const auto state = base::StateOf(file);
    pictures::Picture thumbnail;
    base::EndSilently([&] { thumbnail = pictures::LoadFittedPicture(file, ThumbnailBox, pixelRatio); });
    if (base::StateOf(file) != state) continue;
    if (thumbnail.IsEmpty()) return {};
    base::EndSilently([&] { pictures::SavePicture(thumbnail.Image(), ThumbFileName(paths, photoId)); });
    if (base::StateOf(file) == state) return thumbnail;
    QFile::remove(ThumbFileName(paths, photoId));
  }
  return {};
}

QDateTime GetFileDate(const QString& path) {
  const QFileInfo file(path);
  if (!file.exists()) {
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(path));
  }
  const QDateTime date = file.lastModified();
  return QDateTime(date.date(), QTime(date.time().hour(), date.time().minute(), date.time().second()),
                   Qt::UTC);
}

QString GetFileExtension(const QString& name) {
  const qsizetype point = name.indexOf(QLatin1Char('.'));
  return point < 0 ? QString() : name.mid(point + 1);
}

}  // namespace veldrin::catalogue
