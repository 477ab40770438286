#include "pictures/picture.h"

#include <Magick++.h>
#include <magick/api.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>
#include <QtEndian>
#include <cmath>
#include <mutex>

#include "base/runtime_error.h"
#include "base/units.h"

namespace veldrin::pictures {

namespace {

[[noreturn]] void RaiseInvalidPicture(const QString& path) {
  throw base::RuntimeError(base::errInvalidPicture, QStringLiteral("Invalid picture: %1").arg(path));
}

void CheckClaim(QSize size, qint64 limit, const QString& path) {
  if (static_cast<qint64>(size.width()) * size.height() > limit) RaiseInvalidPicture(path);
}

// --- wholeness --------------------------------------------------------------------------------------------
// Qt's readers show what is there of a file that was cut short; such a file is broken.

int BigEndian16(const QByteArray& bytes, qsizetype at) {
  return qFromBigEndian<quint16>(bytes.constData() + at);
}
qint64 LittleEndian(const QByteArray& bytes, qsizetype at) {
  return qFromLittleEndian<qint32>(bytes.constData() + at);
}

// Within the picture's data the end marker's bytes can't occur; in the segments in front of it, such as a
// preview in the header, they can, and those have a length by which they are passed over.
bool JpegHasEnd(const QByteArray& file) {
  qsizetype at = 2;
  // Stray bytes in front of a marker are passed over, as every reader does.
  while ((at = file.indexOf('\xFF', at)) >= 0 && at + 4 <= file.size()) {
    const int marker = static_cast<uchar>(file[at + 1]);
    if (marker == 0xFF) {
      ++at;  // A fill byte.
      continue;
    }
    at += 2 + BigEndian16(file, at + 2);
    if (marker == 0xDA) return file.lastIndexOf("\xFF\xD9") >= at;
  }
  return false;
}

bool BitmapIsWhole(QFile& file) {
  const QByteArray header = file.peek(54);
  if (header.size() < 54 || LittleEndian(header, 14) < 40 || LittleEndian(header, 30) != 0) return true;
  const qint64 rowBytes =
      (LittleEndian(header, 18) * qFromLittleEndian<quint16>(header.constData() + 28) + 31) / 32 * 4;
  return file.size() >= LittleEndian(header, 10) + rowBytes * std::abs(LittleEndian(header, 22));
}

// --- reading ----------------------------------------------------------------------------------------------

bool IsQtFormat(const QByteArray& format) {
  return format == "jpeg" || format == "bmp" || format == "gif" || format == "png" || format == "tga";
}

// Qt refuses pictures of more than 128 MB by itself; the largest photographs pass that.
void AllowLargePictures() {
  static std::once_flag once;
  std::call_once(
      once, [] { QImageReader::setAllocationLimit(static_cast<int>(MaxPicturePixels * 4 / 1'000'000)); });
}

Picture ReadWithQt(QImageReader& reader, const QString& path, const DrawnSize& drawn) {
  const bool turned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
  QSize natural = reader.size();
  if (natural.isValid()) {
    CheckClaim(natural, drawn && reader.format() == "jpeg" ? MaxJpegPixels : MaxPicturePixels, path);
    const QRect firstRow(0, 0, natural.width(), 1);
    if (turned) natural.transpose();
    const QSize target = drawn ? drawn(natural) : natural;
    if (target.isNull()) {
      reader.setClipRect(firstRow);
    } else if (target.width() < natural.width() && target.height() < natural.height()) {
      reader.setScaledSize(turned ? target.transposed() : target);
    }
  }
  QImage image = reader.read();
  if (image.isNull()) RaiseInvalidPicture(path);
  if (!natural.isValid()) natural = image.size();
  return {std::move(image), natural};
}

void InitializeMagickOnce() {
  static std::once_flag once;
  // Without the library's signal handlers: a killed program must die as its desktop expects.
  std::call_once(once, [] {
    MagickLib::ExceptionInfo exception;
    MagickLib::GetExceptionInfo(&exception);
    MagickLib::InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &exception);
    MagickLib::DestroyExceptionInfo(&exception);
  });
}

// The format that GraphicsMagick is told to read; it is never left to guess, since some of its formats are
// scripts.
const char* MagickFormat(const QByteArray& file, const QString& path) {
  if (file.startsWith('\x0A')) return "PCX";
  if (file.size() > 2055 && file.mid(2048, 7) == "PCD_IPI") return "PCD";
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("tga")) return "TGA";
  if (suffix == QLatin1String("dib") || suffix == QLatin1String("bmp")) return "DIB";
  return nullptr;
}

Picture ReadWithMagick(const QString& path) {
  InitializeMagickOnce();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) RaiseInvalidPicture(path);
  const char* format = MagickFormat(file.peek(4096), path);
  if (file.size() == 0 || file.size() > MaxPicturePixels * 4 || format == nullptr) RaiseInvalidPicture(path);
  const QByteArray bytes = file.readAll();
  try {
    const Magick::Blob blob(bytes.constData(), static_cast<size_t>(bytes.size()));
    // A Photo CD file holds a picture in several sizes; the third, of 768 by 512, is the one that all have.
    constexpr unsigned int PhotoCdBase = 3;
    const bool photoCd = format == QLatin1String("PCD");
    Magick::Image header;
    header.magick(format);
    if (photoCd) header.subImage(PhotoCdBase);
    header.ping(blob);
    CheckClaim(QSize(static_cast<int>(header.columns()), static_cast<int>(header.rows())), MaxPicturePixels,
               path);

    Magick::Image decoded;
    decoded.magick(format);
    if (photoCd) decoded.subImage(PhotoCdBase);
    decoded.read(blob);
    QImage image(static_cast<int>(decoded.columns()), static_cast<int>(decoded.rows()), QImage::Format_RGB32);
    if (image.isNull()) RaiseInvalidPicture(path);  // Memory has no room for it.
    decoded.write(0, 0, decoded.columns(), decoded.rows(), "BGRA", Magick::CharPixel, image.bits());
    const QSize natural = image.size();
    return {std::move(image), natural};
  } catch (const Magick::Exception&) {
    RaiseInvalidPicture(path);
  } catch (const std::bad_alloc&) {
    RaiseInvalidPicture(path);
  }
}

}  // namespace

int Picture::Width() const { return base::RoundToInt(Natural.width() * HimetricPerPixel); }
int Picture::Height() const { return base::RoundToInt(Natural.height() * HimetricPerPixel); }

Picture LoadPicture(const QString& path, const DrawnSize& drawn) {
  const QFileInfo info(path);
  if (!info.exists())
    throw base::RuntimeError(base::errFileNotFound, QStringLiteral("File not found: %1").arg(path));
  QFile file(path);
  if (!info.isFile() || !file.open(QIODevice::ReadOnly)) RaiseInvalidPicture(path);

  const QByteArray format = QImageReader::imageFormat(&file);
  if (!IsQtFormat(format)) return ReadWithMagick(path);
  QBuffer buffer;
  QIODevice* source = &file;
  if (format == "jpeg") {
    buffer.setData(file.readAll());
    buffer.open(QIODevice::ReadOnly);
    if (!JpegHasEnd(buffer.data())) RaiseInvalidPicture(path);
    source = &buffer;
  } else if (format == "bmp" && !BitmapIsWhole(file)) {
    RaiseInvalidPicture(path);
  }
  AllowLargePictures();
  QImageReader reader(source, format);
  reader.setAutoTransform(true);
  return ReadWithQt(reader, path, drawn);
}

void SavePicture(const QImage& image, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    throw base::RuntimeError(base::errPathFileAccess, QStringLiteral("Path/File access error: %1").arg(path));
  }
  if (!image.convertToFormat(QImage::Format_RGB32).save(&file, "BMP") || !file.commit()) {
    throw base::RuntimeError(base::errDiskFull, QStringLiteral("Disk full: %1").arg(path));
  }
}

}  // namespace veldrin::pictures
