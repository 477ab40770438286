#include "samples/sample_files.h"

#include <Magick++.h>
#include <magick/api.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QTransform>
#include <mutex>
#include <stdexcept>

namespace veldrin::samples {

namespace {

constexpr int JpegQuality = 88;

QByteArray WithQt(const QImage& image, const char* format, int quality = -1) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, format, quality)) throw std::runtime_error(std::string("can't write ") + format);
  return buffer.data();
}

QByteArray WithMagick(const QImage& image, const char* format) {
  static std::once_flag once;
  std::call_once(once, [] { MagickLib::InitializeMagick(nullptr); });
  const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
  Magick::Image picture(static_cast<unsigned>(rgb.width()), static_cast<unsigned>(rgb.height()), "BGRA",
                        Magick::CharPixel, rgb.constBits());
  picture.matte(false);
  if (QByteArray(format) == "GIF") picture.quantizeColors(255);
  picture.magick(format);
  Magick::Blob blob;
  picture.write(&blob);
  return {static_cast<const char*>(blob.data()), static_cast<qsizetype>(blob.length())};
}

}  // namespace

QByteArray ToTarga(const QImage& image, int version) {
  const QImage bgr = image.convertToFormat(QImage::Format_BGR888);
  const auto low = [](int value) { return static_cast<char>(value & 0xFF); };
  QByteArray file(18, '\0');
  file[2] = 2;  // True color, not compressed.
  file[12] = low(bgr.width());
  file[13] = low(bgr.width() >> 8);
  file[14] = low(bgr.height());
  file[15] = low(bgr.height() >> 8);
  file[16] = 24;
  for (int y = bgr.height() - 1; y >= 0; --y) {
    file.append(reinterpret_cast<const char*>(bgr.constScanLine(y)), bgr.width() * 3);
  }
  // The footer of the second version: no extension area, no developer directory.
  if (version == 2) file.append(8, '\0').append("TRUEVISION-XFILE.", 17).append('\0');
  return file;
}

QByteArray ToTurnedJpeg(const QImage& upright, int orientation, int quality) {
  // What a reader undoes: 3 is half a turn, 6 a quarter clockwise, 8 a quarter the other way.
  const int turn = orientation == 3 ? 180 : orientation == 6 ? -90 : 90;
  QByteArray file = WithQt(upright.transformed(QTransform().rotate(turn)), "JPEG", quality);
  const char segment[] = {
      '\xFF', '\xE1', 0,    34,   'E', 'x', 'i', 'f', 0, 0,  // The segment; its length counts from itself on.
      'M',    'M',    0,    42,   0,   0,   0,   8,          // Big-endian; the directory follows.
      0,      1,      0x01, 0x12, 0,   3,   0,   0,   0, 1, 0, char(orientation),
      0,      0,                // One entry: Orientation, a short.
      0,      0,      0,    0,  // No further directory.
  };
  return file.insert(2, QByteArrayView(segment, sizeof segment));
}

void WriteSample(const QImage& upright, const QString& path, int variant) {
  const QString type = QFileInfo(path).suffix();
  QByteArray bytes;
  if (variant > 1) {
    bytes = ToTurnedJpeg(upright, variant, JpegQuality);
  } else if (type == QLatin1String("jpg")) {
    bytes = WithQt(upright, "JPEG", JpegQuality);
  } else if (type == QLatin1String("bmp") || type == QLatin1String("dib")) {
    bytes = WithQt(upright.convertToFormat(QImage::Format_RGB888), "BMP");
  } else if (type == QLatin1String("tga")) {
    bytes = ToTarga(upright, variant == 1 ? 1 : 2);
  } else {
    bytes = WithMagick(upright, type.toUpper().toLatin1().constData());
  }
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    throw std::runtime_error("can't write " + path.toStdString());
  }
}

}  // namespace veldrin::samples
