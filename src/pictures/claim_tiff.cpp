#include <algorithm>

#include "pictures/claim.h"

namespace veldrin::pictures {

namespace {

enum Tag : int {
  ImageWidth = 256,
  ImageLength = 257,
  BitsPerSample = 258,
  Compression = 259,
  Photometric = 262,
  StripOffsets = 273,
  SamplesPerPixel = 277,
  RowsPerStrip = 278,
  StripByteCounts = 279,
  ColorMap = 320,
  TileWidth = 322,
  TileLength = 323,
  TileOffsets = 324,
  TileByteCounts = 325,
};

// The first directory of a TIFF file.
class Directory {
 public:
  explicit Directory(const QByteArray& file) : File(file), IsBig(file.startsWith('M')) {
    Start = Number(4, 4);
  }

  bool IsWhole() const { return Start >= 8 && Start + 2 + 12 * Number(Start, 2) <= File.size(); }

  /// How many values a tag has, 0 where it is missing or its values aren't in the file.
  qint64 Count(Tag tag) const {
    const qint64 entry = Find(tag);
    if (entry < 0) return 0;
    const qint64 count = Number(entry + 4, 4);
    return ValuesAt(entry) + count * ValueBytes(entry) <= File.size() ? count : 0;
  }

  qint64 Value(Tag tag, qint64 missing) const { return Count(tag) > 0 ? ValueOf(Find(tag), 0) : missing; }

  /// Whether all parts of the picture lie in the file.
  bool HasParts(Tag offsets, Tag counts) const {
    const qint64 parts = Count(offsets);
    const qint64 sized = Count(counts);
    const qint64 places = Find(offsets);
    const qint64 sizes = Find(counts);
    for (qint64 i = 0; i < parts; ++i) {
      if (ValueOf(places, i) + (i < sized ? ValueOf(sizes, i) : 0) > File.size()) return false;
    }
    return parts > 0;
  }

 private:
  qint64 Number(qint64 at, int size) const {
    return IsBig ? BigEndian(File, at, size) : LittleEndian(File, at, size);
  }

  qint64 Find(Tag tag) const {
    const qint64 entries = Number(Start, 2);
    for (qint64 i = 0; i < entries; ++i) {
      if (Number(Start + 2 + 12 * i, 2) == tag) return Start + 2 + 12 * i;
    }
    return -1;
  }

  int ValueBytes(qint64 entry) const {
    const qint64 type = Number(entry + 2, 2);
    return type == 3 ? 2 : type == 4 || type == 13 ? 4 : 1;
  }

  qint64 ValuesAt(qint64 entry) const {
    return Number(entry + 4, 4) * ValueBytes(entry) <= 4 ? entry + 8 : Number(entry + 8, 4);
  }

  qint64 ValueOf(qint64 entry, qint64 index) const {
    return Number(ValuesAt(entry) + index * ValueBytes(entry), ValueBytes(entry));
  }

  const QByteArray& File;
  bool IsBig;
  qint64 Start = 0;
};

// The packings that scanners, cameras and editors write; others take memory by claims of their own.
bool IsKnownPacking(qint64 packing) {
  return (packing >= 1 && packing <= 8 && packing != 6) || packing == 32773 || packing == 32946;
}

}  // namespace

std::optional<Claim> ClaimOfTiff(const QByteArray& file) {
  const Directory directory(file);
  const qint64 width = directory.Value(ImageWidth, 0);
  const qint64 height = directory.Value(ImageLength, 0);
  constexpr qint64 Most = 1 << 20;
  constexpr qint64 MostPixels = 1 << 30;
  if (width > MostPixels || height > MostPixels) return {};
  if (!directory.IsWhole() || !IsKnownPacking(directory.Value(Compression, 1))) return {};
  const bool tiled = directory.Count(TileOffsets) > 0;
  const bool isWhole = tiled ? directory.HasParts(TileOffsets, TileByteCounts)
                             : directory.HasParts(StripOffsets, StripByteCounts);
  // Without its colours a picture of indexes would come out in grey.
  constexpr int Indexes = 3;
  if (directory.Value(Photometric, 0) == Indexes && directory.Count(ColorMap) == 0) return {};
  const qint64 bits = directory.Value(BitsPerSample, 1);
  const qint64 samples = directory.Value(SamplesPerPixel, 1);
  if (!isWhole || bits > 64 || samples > 16) return {};
  const qint64 across = tiled ? directory.Value(TileWidth, Most) : width;
  const qint64 down =
      tiled ? directory.Value(TileLength, Most) : std::min(height, directory.Value(RowsPerStrip, height));
  // A part is unpacked as a whole, but for strips of deep colours, which are read row by row.
  const qint64 partBytes =
      tiled || bits <= 8 ? std::min(across, Most) * std::min(down, Most) * ((bits * samples + 7) / 8) : 0;
  const qint64 pixelBytes = bits == 1 ? 4 : bits <= 8 ? 5 : bits == 16 ? 8 : 16;
  return Claim{QSize(static_cast<int>(width), static_cast<int>(height)), pixelBytes, partBytes, 0};
}

}  // namespace veldrin::pictures
