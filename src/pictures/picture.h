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
/// 0 by 0 for a trial: see LoadPicture.
using DrawnSize = std::function<QSize(QSize natural)>;

/// Decodes a file. With `drawn` the picture is decoded at about that size, which is much quicker for large
/// photographs; its natural size stays that of the file.
///
/// Formats, known by the content, whatever the name says: bmp and dib, gif, jpeg, pcd, pcx, png, tga, tiff,
/// webp. Of an animation or several pages the first is loaded. Formats that are scripts are never read.
///
/// A JPEG or GIF of which the end is missing loads with an empty rest, as long as any of its picture is
/// there. A cut file of another format is refused: what is missing there leaves nothing to look at, or holes.
///
/// A trial promises that the file is read, known, whole in the sense above and within the limits, and that a
/// decoder takes it: of a JPEG the first row, which for a progressive one means all scans, of any other
/// format the whole picture. Its result is that row. What may still fail later is memory, and the file
/// itself.
///
/// Raises 53 for a file that doesn't exist; 57 for one that can't be opened or read; 481 for what is surely
/// no picture: an empty, damaged or cut file, another format, a directory; 7 for a lack of memory and for a
/// picture beyond the limits. Safe to call from any thread; decodings that take much memory wait for each
/// other.
Picture LoadPicture(const QString& path, const DrawnSize& drawn = {});

/// False only for what is surely no picture. A picture that is merely too large for this machine or the
/// limits is one. Raises 53 and 57. As quick as a trial.
bool IsPicture(const QString& path);

/// What a decoding takes in memory at most, its file and all that is made on the way included. Enough for 150
/// megapixels in every format, also of 16 bits a colour or in progressive scans, and for 600 of a plain JPEG;
/// not for the largest PCX files and TIFF files of 32 bits a colour. It is told before memory is asked for: a
/// file of a few bytes can claim any size.
constexpr qint64 MaxDecodingBytes = 2'500'000'000;
/// Beyond it sizes in HIMETRIC and twips are no numbers any more.
constexpr int MaxPictureSide = 1'000'000;
/// A JPEG with one scan that is drawn smaller is decoded smaller and takes hardly any memory, only time.
constexpr qint64 MaxJpegPixels = 2'000'000'000;
/// Blocks of 8 by 8 pixels that a JPEG's scans go through, all together; a few seconds. Ten scans are usual,
/// thousands fit into a small file.
constexpr qint64 MaxJpegSteps = 200'000'000;

/// Writes a 24-bit Windows bitmap, whole or not at all, replacing a file of that name. Raises 75 or 61.
void SavePicture(const QImage& image, const QString& path);

}  // namespace veldrin::pictures
