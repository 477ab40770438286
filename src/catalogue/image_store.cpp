#include "catalogue/image_store.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/failure.h"
#include "platform/runtime_error.h"
#include "platform/twips.h"

namespace veldrin::catalogue {

using platform::Picture;
using platform::RoundToInt;

namespace {

// From HIMETRIC to twips, nearly: the factor by which the program has always drawn.
constexpr double HimetricPerTwip = 1.8;

QSize ToDevicePixels(TwipSize size, double pixelRatio) {
  const auto pixels = [&](int twips) {
    return std::max(1, RoundToInt(twips * pixelRatio / platform::TwipsPerPixel));
  };
  return {pixels(size.Width), pixels(size.Height)};
}

}  // namespace

QString ImageFileName(const Paths& paths, int photoId, const QString& imageType) {
  return paths.ImageDir + QString::number(photoId) + QLatin1Char('.') + imageType;
}

QString ThumbFileName(const Paths& paths, int photoId) {
  return paths.ThumbDir + QString::number(photoId) + QStringLiteral("t.bmp");
}

TwipSize FitToBox(int himetricWidth, int himetricHeight, TwipSize box) {
  const int naturalWidth = RoundToInt(himetricWidth / HimetricPerTwip);
  const int naturalHeight = RoundToInt(himetricHeight / HimetricPerTwip);
  if (naturalHeight == 0) throw platform::RuntimeError(11, QStringLiteral("Division by zero."));
  TwipSize fitted;
  fitted.Height = box.Height;
  fitted.Width = RoundToInt(naturalWidth * (static_cast<double>(box.Height) / naturalHeight));
  if (box.Width < fitted.Width) {
    const double ratio = static_cast<double>(box.Width) / fitted.Width;
    fitted.Width = box.Width;
    fitted.Height = RoundToInt(fitted.Height * ratio);
  }
  return fitted;
}

TwipSize FitToBox(const Picture& picture, TwipSize box) {
  return FitToBox(picture.Width(), picture.Height(), box);
}

Picture LoadPictureForBox(const QString& path, TwipSize box, double pixelRatio) {
  return platform::LoadPicture(
      path, [&](QSize natural) { return ToDevicePixels(FitToBox(Picture({}, natural), box), pixelRatio); });
}

Picture LoadFittedPicture(const QString& path, TwipSize box, double pixelRatio) {
  const Picture picture = LoadPictureForBox(path, box, pixelRatio);
  const QSize size = ToDevicePixels(FitToBox(picture, box), pixelRatio);
  return {picture.Image().scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
          picture.NaturalPixels()};
}

void CreateThumbnail(const Paths& paths, int photoId, const QString& imageType, double pixelRatio) {
  platform::EndSilently([&] {
    const QString file = ImageFileName(paths, photoId, imageType);
    platform::SavePicture(LoadFittedPicture(file, ThumbnailBox, pixelRatio).Image(),
                          ThumbFileName(paths, photoId));
  });
}

QDateTime GetFileDate(const QString& path) {
  const QFileInfo file(path);
  if (!file.exists()) {
    throw platform::RuntimeError(platform::errFileNotFound, QStringLiteral("File not found: %1").arg(path));
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
