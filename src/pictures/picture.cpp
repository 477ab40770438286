#include "pictures/picture.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <new>

#include "base/runtime_error.h"
#include "base/units.h"
#include "pictures/claim.h"
#include "pictures/decoders.h"

namespace veldrin::pictures {

namespace {

[[noreturn]] void Raise(base::ErrorNumber number, const char* text, const QString& path) {
  throw base::RuntimeError(number, QStringLiteral("%1: %2").arg(QLatin1String(text), path));
}

[[noreturn]] void RaiseInvalidPicture(const QString& path) {
  Raise(base::errInvalidPicture, "Invalid picture", path);
}

// Appends to the bytes what the file has left of so many, until its end.
void ReadOn(QFile& file, QByteArray& bytes, qint64 count) {
  while (count > 0) {
    const qsizetype at = bytes.size();
    bytes.resize(at + count);
    const qint64 read = file.read(bytes.data() + at, count);
    bytes.truncate(at + std::max<qint64>(0, read));
    if (read < 0) Raise(base::errDeviceIO, "Device I/O error", file.fileName());
    if (read == 0) return;
    count -= read;
  }
}

Picture ReadPicture(const QString& path, const DrawnSize& drawn) {
  const QFileInfo info(path);
  if (!info.exists()) Raise(base::errFileNotFound, "File not found", path);
  if (!info.isFile()) RaiseInvalidPicture(path);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    Raise(base::errDeviceIO, "Device I/O error", path);
  QByteArray bytes;
  ReadOn(file, bytes, FileKindBytes);
  const FileKind kind = KindOf(bytes);
  if (kind == FileKind::Unknown) RaiseInvalidPicture(path);
  if (file.size() > MaxDecodingBytes) throw std::bad_alloc();
  bytes.reserve(file.size() + FileKindBytes);  // A claim may rewrite the headers.
  ReadOn(file, bytes, file.size() - bytes.size());
  const auto claim = ClaimOf(kind, bytes);
  Picture picture;
  if (claim) picture = Decode(kind, bytes, *claim, drawn);
  if (picture.IsEmpty()) RaiseInvalidPicture(path);
  return picture;
}

}  // namespace

int Picture::Width() const { return base::RoundToInt(Natural.width() * HimetricPerPixel); }
int Picture::Height() const { return base::RoundToInt(Natural.height() * HimetricPerPixel); }

Picture LoadPicture(const QString& path, const DrawnSize& drawn) {
  try {
    return ReadPicture(path, drawn);
  } catch (const std::bad_alloc&) {
    Raise(base::errOutOfMemory, "Out of memory", path);
  }
}

bool IsPicture(const QString& path) {
  try {
    LoadPicture(path, [](QSize) { return QSize(0, 0); });
  } catch (const base::RuntimeError& error) {
    if (error.Number() == base::errInvalidPicture) return false;
    if (error.Number() != base::errOutOfMemory) throw;
  }
  return true;
}

void SavePicture(const QImage& image, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    Raise(base::errPathFileAccess, "Path/File access error", path);
  }
  if (!image.convertToFormat(QImage::Format_RGB32).save(&file, "BMP") || !file.commit()) {
    Raise(base::errDiskFull, "Disk full", path);
  }
}

}  // namespace veldrin::pictures
