#include "pictures/decoders.h"

#include <Magick++.h>
#include <magick/api.h>

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <memory>
#include <mutex>
#include <new>

namespace veldrin::pictures {

namespace {

// Decodings that take much memory wait for each other, however many threads there are.
std::mutex LargeDecoding;
constexpr qint64 LargeBytes = 400'000'000;

// Room for a decoding, held against what there is before a library asks for it, for not all libraries tell a
// lack of memory from a broken file.
class Room {
 public:
  explicit Room(qint64 bytes) : Bytes(bytes), Lock(LargeDecoding, std::defer_lock) {
    if (bytes > MaxDecodingBytes) throw std::bad_alloc();
    if (bytes > LargeBytes) Lock.lock();
    Try();
  }
  void Try() const { QByteArray().reserve(Bytes); }

 private:
  qint64 Bytes;
  std::unique_lock<std::mutex> Lock;
};

// --- Qt ---------------------------------------------------------------------------------------------------

// By how many eighths a JPEG is decoded: no smaller than it is drawn.
qint64 Eighths(QSize natural, QSize target) {
  const double ratio = std::min(static_cast<double>(natural.width()) / target.width(),
                                static_cast<double>(natural.height()) / target.height());
  return std::clamp<qint64>(static_cast<qint64>(std::ceil(8 / ratio)), 1, 8);
}

const char* QtFormat(FileKind kind) {
  switch (kind) {
    case FileKind::Jpeg:
      return "jpeg";
    case FileKind::Png:
      return "png";
    case FileKind::Gif:
      return "gif";
    case FileKind::Bitmap:
      return "bmp";
    case FileKind::WebP:
      return "webp";
    case FileKind::Tiff:
      return "tiff";
    default:
      return nullptr;
  }
}

bool IsTurned(const QImageReader& reader) {
  return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
}

// Sets at which size the picture of this natural size is decoded. Returns what its pixels take in memory.
qint64 SetSize(QImageReader& reader, FileKind kind, const Claim& claim, QSize natural, QSize target) {
  const qint64 whole = PixelsOf(natural) * claim.PixelBytes;
  if (target.isNull()) {
    reader.setClipRect(QRect(0, 0, claim.Size.width(), 1));
    return kind == FileKind::Jpeg ? claim.Size.width() * claim.PixelBytes : whole;
  }
  if (target.width() < natural.width() && target.height() < natural.height()) {
    reader.setScaledSize(IsTurned(reader) ? target.transposed() : target);
    const qint64 eighths = kind == FileKind::Jpeg ? Eighths(natural, target) : 8;
    constexpr qint64 ScaledAndTurned = 8;
    return whole * eighths * eighths / 64 + PixelsOf(target) * ScaledAndTurned;
  }
  return reader.transformation() == QImageIOHandler::TransformationNone ? whole : 2 * whole;
}

Picture DecodeWithQt(FileKind kind, QByteArray& file, const Claim& claim, const DrawnSize& drawn) {
  QBuffer buffer(&file);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, QtFormat(kind));
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  // Of a bitmap that begins with the upper row the height is negative; of a GIF the size is a guess.
  const QSize seen(reader.size().width(), std::abs(reader.size().height()));
  if (kind != FileKind::Gif && seen != claim.Size) return {};
  const QSize natural = IsTurned(reader) ? claim.Size.transposed() : claim.Size;
  const QSize target = drawn ? drawn(natural) : natural;
  const Room room(file.size() + claim.FixedBytes + SetSize(reader, kind, claim, natural, target));
  QImage image = reader.read();
  if (image.isNull()) room.Try();
  return {std::move(image), natural};
}

// --- GraphicsMagick ---------------------------------------------------------------------------------------

struct MagickFailure : MagickLib::ExceptionInfo {
  MagickFailure() { MagickLib::GetExceptionInfo(this); }
  ~MagickFailure() { MagickLib::DestroyExceptionInfo(this); }
  MagickFailure(const MagickFailure&) = delete;
  MagickFailure& operator=(const MagickFailure&) = delete;

  bool HasOccurred() const { return severity != MagickLib::UndefinedException; }
  bool IsLackOfMemory() const {
    return severity == MagickLib::ResourceLimitError || severity == MagickLib::ResourceLimitFatalError;
  }
};

const char* MagickFormat(FileKind kind) {
  return kind == FileKind::Targa ? "TGA" : kind == FileKind::Pcx ? "PCX" : "PCD";
}

// Claims have been found good by then; these limits are for what they may have missed.
void InitializeMagickOnce() {
  static std::once_flag once;
  std::call_once(once, [] {
    MagickFailure failure;
    // Without the library's signal handlers: a killed program must die as its desktop expects.
    MagickLib::InitializeMagickEx(nullptr, MAGICK_OPT_NO_SIGNAL_HANDER, &failure);
    MagickLib::SetMagickResourceLimit(MagickLib::PixelsResource, MaxDecodingBytes / 8);
    MagickLib::SetMagickResourceLimit(MagickLib::DiskResource, 0);
    MagickLib::SetMagickResourceLimit(MagickLib::ReadResource, MaxDecodingBytes);
  });
}

Picture DecodeWithMagick(FileKind kind, const QByteArray& file, const Claim& claim) {
  const Room room(file.size() + claim.FixedBytes + PixelsOf(claim.Size) * claim.PixelBytes);
  InitializeMagickOnce();
  MagickFailure failure;
  const std::unique_ptr<MagickLib::ImageInfo, decltype(&MagickLib::DestroyImageInfo)> info(
      MagickLib::CloneImageInfo(nullptr), MagickLib::DestroyImageInfo);
  // The format's own reader is called: whatever else the library is told, it looks at the content and
  // guesses, and some of its formats are scripts.
  const MagickLib::MagickInfo* format = MagickLib::GetMagickInfo(MagickFormat(kind), &failure);
  if (format == nullptr || format->decoder == nullptr) return {};
  std::copy_n(MagickFormat(kind), 4, info->magick);
  // In this place of the structure stand the plain bytes, which are only read.
  info->blob = reinterpret_cast<MagickLib::_BlobInfoPtr_>(const_cast<char*>(file.constData()));
  info->length = static_cast<size_t>(file.size());
  // What follows the first picture, be it another one or nothing that makes sense, isn't looked at. A Photo
  // CD file holds its picture in several sizes.
  info->subimage = kind == FileKind::PhotoCd ? 3 : 0;
  info->subrange = 1;
  const std::unique_ptr<MagickLib::Image, decltype(&MagickLib::DestroyImageList)> decoded(
      format->decoder(info.get(), &failure), MagickLib::DestroyImageList);
  if (failure.IsLackOfMemory()) throw std::bad_alloc();
  if (!decoded || failure.HasOccurred()) return {};
  QImage image(static_cast<int>(decoded->columns), static_cast<int>(decoded->rows), QImage::Format_RGB32);
  if (image.isNull()) throw std::bad_alloc();
  MagickLib::DispatchImage(decoded.get(), 0, 0, decoded->columns, decoded->rows, "BGRA", MagickLib::CharPixel,
                           image.bits(), &failure);
  if (failure.HasOccurred()) return {};
  const QSize natural = image.size();
  return {std::move(image), natural};
}

}  // namespace

Picture Decode(FileKind kind, QByteArray& file, const Claim& claim, const DrawnSize& drawn) {
  static std::once_flag once;
  // The library's own limit is below the size of large photographs.
  std::call_once(once, [] { QImageReader::setAllocationLimit(static_cast<int>(MaxDecodingBytes >> 20)); });
  if (claim.Steps > MaxJpegSteps || (kind == FileKind::Jpeg && PixelsOf(claim.Size) > MaxJpegPixels) ||
      std::max(claim.Size.width(), claim.Size.height()) > MaxPictureSide)
    throw std::bad_alloc();
  return QtFormat(kind) != nullptr ? DecodeWithQt(kind, file, claim, drawn)
                                   : DecodeWithMagick(kind, file, claim);
}

}  // namespace veldrin::pictures
