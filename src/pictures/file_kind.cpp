#include "pictures/file_kind.h"

#include <algorithm>
#include <initializer_list>

namespace veldrin::pictures {

namespace {

bool IsOneOf(qint64 value, std::initializer_list<int> values) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

bool IsInfoHeader(const QByteArray& file) {
  const bool old = LittleEndian(file, 0, 4) == 12;
  return IsOneOf(LittleEndian(file, 0, 4), {12, 16, 40, 52, 56, 64, 108, 124}) &&
         LittleEndian(file, old ? 8 : 12, 2) == 1 &&
         IsOneOf(LittleEndian(file, old ? 10 : 14, 2), {1, 4, 8, 16, 24, 32});
}

bool IsPcx(const QByteArray& file) {
  return file.startsWith('\x0A') && IsOneOf(LittleEndian(file, 1, 1), {0, 2, 3, 4, 5}) &&
         LittleEndian(file, 2, 1) <= 1 && IsOneOf(LittleEndian(file, 3, 1), {1, 2, 4, 8}) &&
         LittleEndian(file, 65, 1) <= 4;
}

// The kind without a mark of its own, which only the second version has, at its end: each field of the header
// must make sense with the others.
bool IsTarga(const QByteArray& file) {
  const qint64 colorMap = LittleEndian(file, 1, 1);
  const qint64 depth = LittleEndian(file, 16, 1);
  if (file.size() < 18 || colorMap > 1 || LittleEndian(file, 17, 1) >= 0x40) return false;
  switch (LittleEndian(file, 2, 1)) {
    case 1:
    case 9:
      return colorMap == 1 && depth == 8 && IsOneOf(LittleEndian(file, 7, 1), {15, 16, 24, 32});
    case 2:
    case 10:
      return IsOneOf(depth, {15, 16, 24, 32});
    case 3:
    case 11:
      return IsOneOf(depth, {8, 16});
    default:
      return false;
  }
}

}  // namespace

qint64 LittleEndian(const QByteArray& file, qint64 at, int size) {
  if (at < 0 || at > file.size() - size) return 0;
  qint64 value = 0;
  for (int i = size - 1; i >= 0; --i) value = value * 256 + static_cast<uchar>(file[at + i]);
  return value;
}

qint64 BigEndian(const QByteArray& file, qint64 at, int size) {
  if (at < 0 || at > file.size() - size) return 0;
  qint64 value = 0;
  for (int i = 0; i < size; ++i) value = value * 256 + static_cast<uchar>(file[at + i]);
  return value;
}

FileKind KindOf(const QByteArray& beginning) {
  using enum FileKind;
  if (beginning.startsWith("\xFF\xD8")) return Jpeg;
  if (beginning.startsWith("\x89PNG\r\n\x1A\n")) return Png;
  if (beginning.startsWith("GIF8")) return Gif;
  if (beginning.startsWith("BM") || IsInfoHeader(beginning)) return Bitmap;
  if (beginning.startsWith("RIFF") && beginning.mid(8, 4) == "WEBP") return WebP;
  if (beginning.startsWith(QByteArrayView("II*\0", 4)) || beginning.startsWith(QByteArrayView("MM\0*", 4)))
    return Tiff;
  if (beginning.mid(2048, 7) == "PCD_IPI") return PhotoCd;
  if (IsPcx(beginning)) return Pcx;
  if (IsTarga(beginning)) return Targa;
  return Unknown;
}

}  // namespace veldrin::pictures
