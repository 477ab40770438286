// What a picture file claims to hold, read from its structure before any decoder sees it. A few bytes can
// claim gigabytes of memory or minutes of work; that is found here.
#pragma once

#include <QByteArray>
#include <QSize>
#include <optional>

#include "pictures/file_kind.h"

namespace veldrin::pictures {

inline qint64 PixelsOf(QSize size) { return static_cast<qint64>(size.width()) * size.height(); }

struct Claim {
  QSize Size;             ///< In pixels, as stored.
  qint64 PixelBytes = 4;  ///< What decoding takes for each pixel, the picture that comes out included.
  qint64 FixedBytes = 0;  ///< What it takes besides, however small the picture is drawn.
  qint64 Steps = 0;  ///< Of a JPEG: how many blocks of 8 by 8 its scans go through, each one all of them.
};

/// Nothing where the file is no whole picture of its kind. Only of a JPEG and a GIF may the end be missing:
/// the rest stays empty, as every viewer shows it. May rewrite the bytes into what the decoders take, and
/// leave out what they would waste time and memory on.
std::optional<Claim> ClaimOf(FileKind kind, QByteArray& file);

// By kind.
std::optional<Claim> ClaimOfJpeg(const QByteArray& file);
std::optional<Claim> ClaimOfPng(QByteArray& file);
std::optional<Claim> ClaimOfGif(QByteArray& file);
std::optional<Claim> ClaimOfBitmap(QByteArray& file);
std::optional<Claim> ClaimOfTiff(const QByteArray& file);

}  // namespace veldrin::pictures
