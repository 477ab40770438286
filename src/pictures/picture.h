// The picture object: what LoadPicture makes of a file.
#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <functional>

namespace veldrin::pictures {

/// The unit of a picture's natural size: 0.01 mm. A picture of a file is taken to have 96 pixels to the inch.
constexpr double HimetricPerPixel = 2540.0 / 96.0;

/// A decoded picture, upright by its orientation tag. Cheap to copy. An empty picture has no size.
class Picture {
 public:
  Picture() = default;
  /// `natural`: the size of the file's picture in pixels, upright; `image` may have been decoded smaller.
  Picture(QImage image, QSize natural) : TheImage(std::move(image)), Natural(natural) {}

  bool IsEmpty() const { return TheImage.isNull(); }

  /// The natural size in HIMETRIC.
  int Width() const;
  int Height() const;

  QSize NaturalPixels() const { return Natural; }
  const QImage& Image() const { return TheImage; }

 private:
  QImage TheImage;
  QSize Natural;
};

/// Given the natural size in pixels, the size in pixels at which the picture will be drawn.
/// 0 by 0 for a trial: no more is decoded then than it takes to tell that the file can be read.
using DrawnSize = std::function<QSize(QSize natural)>;

/// Decodes a file: bmp, dib, gif, jpg, pcd, pcx, tga. With `drawn` the picture is decoded at about that size,
/// which is much quicker for large photographs; its natural size stays that of the file. Raises 481 for what
/// can't be read as a picture: an empty, damaged or cut file, another format, a directory, a size beyond
/// MaxPicturePixels; 53 for a file that doesn't exist. Safe to call from any thread.
Picture LoadPicture(const QString& path, const DrawnSize& drawn = {});

/// Larger claims are refused before memory is asked for. A JPEG that is decoded smaller needs less of it.
constexpr qint64 MaxPicturePixels = 300'000'000;
constexpr qint64 MaxJpegPixels = 2'000'000'000;

/// Writes a 24-bit Windows bitmap, whole or not at all, replacing a file of that name. Raises 75 or 61.
void SavePicture(const QImage& image, const QString& path);

}  // namespace veldrin::pictures
