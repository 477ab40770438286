#include "pictures/claim.h"

#include <algorithm>

namespace veldrin::pictures {

namespace {

// GraphicsMagick has four numbers of 16 bits for a pixel, and the picture that is made of them four of 8.
constexpr qint64 MagickPixelBytes = 12;

QSize SizeOf(qint64 width, qint64 height) {
  constexpr qint64 Most = 1 << 30;
  return {static_cast<int>(std::clamp<qint64>(width, 0, Most)),
          static_cast<int>(std::clamp<qint64>(height, 0, Most))};
}

std::optional<Claim> ClaimOfWebP(const QByteArray& file) {
  const QByteArray chunk = file.mid(12, 4);
  Claim claim;
  if (chunk == "VP8X") {
    const bool isAnimation = (LittleEndian(file, 20, 1) & 2) != 0;
    claim.Size = SizeOf(LittleEndian(file, 24, 3) + 1, LittleEndian(file, 27, 3) + 1);
    claim.PixelBytes = isAnimation ? 16 : 8;  // A frame is painted on the canvas, of which a copy comes out.
  } else if (chunk == "VP8L") {
    const qint64 sizes = LittleEndian(file, 21, 4);
    claim.Size = SizeOf((sizes & 0x3FFF) + 1, ((sizes >> 14) & 0x3FFF) + 1);
    claim.PixelBytes = 8;
  } else if (chunk == "VP8 ") {
    claim.Size = SizeOf(LittleEndian(file, 26, 2) & 0x3FFF, LittleEndian(file, 28, 2) & 0x3FFF);
  } else {
    return {};
  }
  // The decoder reads a copy of the file.
  claim.FixedBytes = file.size();
  return claim;
}

// The number of pixels in the packets of a Targa file, counted no further than needed.
qint64 PacketPixels(const QByteArray& file, qint64 at, qint64 pixelBytes, qint64 needed) {
  qint64 pixels = 0;
  while (pixels < needed && at < file.size()) {
    const qint64 packet = LittleEndian(file, at, 1);
    const qint64 count = (packet & 0x7F) + 1;
    at += 1 + pixelBytes * (packet >= 0x80 ? 1 : count);
    if (at > file.size()) break;
    pixels += count;
  }
  return pixels;
}

std::optional<Claim> ClaimOfTarga(const QByteArray& file) {
  const QSize size = SizeOf(LittleEndian(file, 12, 2), LittleEndian(file, 14, 2));
  const qint64 pixels = PixelsOf(size);
  const qint64 pixelBytes = (LittleEndian(file, 16, 1) + 7) / 8;
  qint64 start = 18 + LittleEndian(file, 0, 1);
  if (LittleEndian(file, 1, 1) == 1) start += LittleEndian(file, 5, 2) * ((LittleEndian(file, 7, 1) + 7) / 8);
  const bool isWhole = LittleEndian(file, 2, 1) >= 9 ? PacketPixels(file, start, pixelBytes, pixels) >= pixels
                                                     : file.size() >= start + pixels * pixelBytes;
  if (!isWhole) return {};
  return Claim{size, MagickPixelBytes, 0, 0};
}

// The number of bytes that a PCX file's runs make, counted no further than needed.
qint64 RunBytes(const QByteArray& file, qint64 needed) {
  qint64 bytes = 0;
  for (qint64 at = 128; bytes < needed && at < file.size(); ++at) {
    const qint64 value = LittleEndian(file, at, 1);
    bytes += value >= 0xC0 ? value & 0x3F : 1;
    if (value >= 0xC0 && ++at == file.size()) return 0;
  }
  return bytes;
}

std::optional<Claim> ClaimOfPcx(const QByteArray& file) {
  const QSize size = SizeOf(LittleEndian(file, 8, 2) - LittleEndian(file, 4, 2) + 1,
                            LittleEndian(file, 10, 2) - LittleEndian(file, 6, 2) + 1);
  const qint64 rowBytes = LittleEndian(file, 66, 2);
  const qint64 bytes = rowBytes * std::max<qint64>(1, LittleEndian(file, 65, 1)) * size.height();
  if (rowBytes * 8 < size.width() * LittleEndian(file, 3, 1)) return {};
  const bool isWhole =
      LittleEndian(file, 2, 1) == 0 ? file.size() - 128 >= bytes : RunBytes(file, bytes) >= bytes;
  if (!isWhole) return {};
  return Claim{size, MagickPixelBytes, bytes, 0};
}

// A Photo CD file holds a picture in several sizes; the third is the one that all have.
std::optional<Claim> ClaimOfPhotoCd(const QByteArray& file) {
  constexpr QSize Base(768, 512);
  constexpr qint64 Start = 96LL * 2048;
  if (file.size() < Start + PixelsOf(Base) * 3 / 2) return {};
  return Claim{Base, MagickPixelBytes, 0, 0};
}

std::optional<Claim> AnyClaim(FileKind kind, QByteArray& file) {
  switch (kind) {
    case FileKind::Jpeg:
      return ClaimOfJpeg(file);
    case FileKind::Png:
      return ClaimOfPng(file);
    case FileKind::Gif:
      return ClaimOfGif(file);
    case FileKind::Bitmap:
      return ClaimOfBitmap(file);
    case FileKind::WebP:
      return ClaimOfWebP(file);
    case FileKind::Tiff:
      return ClaimOfTiff(file);
    case FileKind::Targa:
      return ClaimOfTarga(file);
    case FileKind::Pcx:
      return ClaimOfPcx(file);
    case FileKind::PhotoCd:
      return ClaimOfPhotoCd(file);
    case FileKind::Unknown:
      break;
  }
  return {};
}

}  // namespace

// Texts are packed: a file of one megabyte can hold gigabytes of them, which the decoder would all unpack. By
// a name that it doesn't know it passes them over.
std::optional<Claim> ClaimOfPng(QByteArray& file) {
  const qint64 width = BigEndian(file, 16, 4);
  const qint64 height = BigEndian(file, 20, 4);
  const qint64 depth = BigEndian(file, 24, 1);
  const qint64 color = BigEndian(file, 25, 1);
  const qint64 samples = color == 2 ? 3 : color == 4 ? 2 : color == 6 ? 4 : 1;
  const Claim claim{SizeOf(width, height), depth == 16 ? 8 : 5, 0, 0};
  // No packed byte makes more than 1032.
  if (PixelsOf(claim.Size) > file.size() * 1032 * 8 / std::max<qint64>(1, samples * depth)) return {};
  for (qint64 at = 8; at + 12 <= file.size(); at += 12 + BigEndian(file, at, 4)) {
    if (file.mid(at + 4, 4) == "zTXt" || file.mid(at + 4, 4) == "iTXt") file.replace(at + 4, 4, "vxXt");
  }
  return claim;
}

std::optional<Claim> ClaimOf(FileKind kind, QByteArray& file) {
  const auto claim = AnyClaim(kind, file);
  if (!claim || claim->Size.isEmpty()) return {};
  return claim;
}

}  // namespace veldrin::pictures
