// The kinds of picture files, known by their content alone: names lie, as browsers save what they get under
// the name that the page gave. No other kind is handed to a decoder, least of all one that is a script.
#pragma once

#include <QByteArray>

namespace veldrin::pictures {

enum class FileKind { Unknown, Jpeg, Png, Gif, Bitmap, WebP, Tiff, Targa, Pcx, PhotoCd };

/// How much of a file's beginning tells its kind.
constexpr qint64 FileKindBytes = 4096;

FileKind KindOf(const QByteArray& beginning);

/// The whole number of `size` bytes at a place of a file. 0 where the file has ended before.
qint64 LittleEndian(const QByteArray& file, qint64 at, int size);
qint64 BigEndian(const QByteArray& file, qint64 at, int size);

}  // namespace veldrin::pictures
