#include <QtAlgorithms>
#include <algorithm>
#include <array>

#include "pictures/claim.h"

namespace veldrin::pictures {

namespace {

constexpr qint64 FileHeader = 14;
constexpr qint64 OldHeader = 12;
constexpr qint64 MaskHeader = 108;  // The one with room for all masks.

enum RowPacking : int { None = 0, Rle8 = 1, Rle4 = 2, Masks = 3, AlphaMasks = 6 };

struct Bitmap {
  qint64 HeaderBytes = 0;
  qint64 Width = 0;
  qint64 Height = 0;  // Negative where the first row is the upper one.
  qint64 Bits = 0;
  qint64 Packing = None;
  qint64 Colors = 0;
  std::array<qint64, 4> ColorMasks{};
  qint64 Data = 0;  // Where the pixels begin.

  qint64 Rows() const { return std::abs(Height); }
  qint64 RowBytes() const { return (Width * Bits + 31) / 32 * 4; }
  qint64 DataBytes() const { return RowBytes() * (Rows() - 1) + (Width * Bits + 7) / 8; }
};

qint64 Signed(qint64 value) { return static_cast<qint32>(value); }

// Where the fields of a header stand, by its size. Short ones leave out what follows.
Bitmap ReadHeader(const QByteArray& file) {
  Bitmap bitmap;
  const auto field = [&](qint64 at, int size) {
    return at + size <= bitmap.HeaderBytes ? LittleEndian(file, FileHeader + at, size) : 0;
  };
  bitmap.HeaderBytes = LittleEndian(file, FileHeader, 4);
  const bool old = bitmap.HeaderBytes == OldHeader;
  bitmap.Width = old ? field(4, 2) : Signed(field(4, 4));
  bitmap.Height = old ? field(6, 2) : Signed(field(8, 4));
  bitmap.Bits = field(old ? 10 : 14, 2);
  if (!old) bitmap.Packing = field(16, 4);
  if (!old) bitmap.Colors = field(32, 4);
  const bool hasMasks = bitmap.Packing == Masks || bitmap.Packing == AlphaMasks;
  const qint64 masks = bitmap.HeaderBytes >= 56 || bitmap.Packing == AlphaMasks ? 4 : 3;
  qint64 end = FileHeader + bitmap.HeaderBytes;
  if (hasMasks) {
    for (qint64 i = 0; i < masks; ++i)
      bitmap.ColorMasks[static_cast<size_t>(i)] = LittleEndian(file, FileHeader + 40 + 4 * i, 4);
    end = std::max(end, FileHeader + 40 + 4 * masks);
    bitmap.Packing = bitmap.Bits == 24 ? None : Masks;
  }
  const qint64 most = bitmap.Bits <= 8 ? 1LL << bitmap.Bits : 0;
  const qint64 colors = bitmap.Colors == 0 ? most : bitmap.Colors;
  const qint64 colorBytes = old ? 3 : 4;
  const qint64 stated = LittleEndian(file, 10, 4);
  // A place that leaves no room for colours or lies behind the end is a mistake; the pixels then follow the
  // colours.
  bitmap.Data = stated;
  if (stated < end + std::min<qint64>(1, most) || stated >= file.size())
    bitmap.Data = std::min<qint64>(file.size(), end + colorBytes * std::min(colors, most));
  bitmap.Colors = std::min({colors, most, (bitmap.Data - end) / colorBytes});
  return bitmap;
}

bool IsKnown(const Bitmap& bitmap) {
  const auto is = [&](qint64 packing, std::initializer_list<qint64> bits) {
    return bitmap.Packing == packing && std::find(bits.begin(), bits.end(), bitmap.Bits) != bits.end();
  };
  return is(None, {1, 4, 8, 16, 24, 32}) || is(Rle8, {8}) || is(Rle4, {4}) || is(Masks, {16, 32});
}

// Whether the runs reach their end mark or the last row.
bool RunsAreWhole(const QByteArray& file, const Bitmap& bitmap) {
  qint64 row = 0;
  qint64 column = 0;
  for (qint64 at = bitmap.Data; at + 2 <= file.size();) {
    const qint64 count = LittleEndian(file, at, 1);
    const qint64 value = LittleEndian(file, at + 1, 1);
    at += 2;
    if (count > 0) {
      column += count;
    } else if (value == 0) {
      ++row;
      column = 0;
    } else if (value == 1) {
      return true;
    } else if (value == 2) {
      column += LittleEndian(file, at, 1);
      row += LittleEndian(file, at + 1, 1);
      at += 2;
    } else {
      column += value;
      at += (value * bitmap.Bits + 15) / 16 * 2;
    }
    if (at > file.size() + 1) return false;
    if (row >= bitmap.Rows() || (row == bitmap.Rows() - 1 && column >= bitmap.Width)) return true;
  }
  return false;
}

void Append(QByteArray& header, qint64 value, int size) {
  for (int i = 0; i < size; ++i) header.append(static_cast<char>(value >> (8 * i)));
}

// The decoder takes no more than eight bits of a colour.
qint64 UpperBits(qint64 mask) {
  while (qPopulationCount(static_cast<quint64>(mask)) > 8) mask &= mask - 1;
  return mask;
}

// The headers and colours as every decoder takes them.
QByteArray PlainHeader(const QByteArray& file, const Bitmap& bitmap) {
  const qint64 headerBytes = bitmap.Packing == Masks ? MaskHeader : 40;
  const qint64 colors = bitmap.Bits <= 8 ? 1LL << bitmap.Bits : 0;
  QByteArray header("BM");
  header.append(8, '\0');
  Append(header, FileHeader + headerBytes + 4 * colors, 4);
  Append(header, headerBytes, 4);
  Append(header, bitmap.Width, 4);
  Append(header, bitmap.Height, 4);
  Append(header, 1, 2);
  Append(header, bitmap.Bits, 2);
  Append(header, bitmap.Packing, 4);
  header.append(12, '\0');
  Append(header, colors, 4);
  header.append(4, '\0');
  if (bitmap.Packing == Masks) {
    for (const qint64 mask : bitmap.ColorMasks) Append(header, UpperBits(mask), 4);
    header.append(FileHeader + headerBytes - header.size(), '\0');
  }
  const qint64 colorBytes = bitmap.HeaderBytes == OldHeader ? 3 : 4;
  for (qint64 i = 0; i < colors; ++i) {
    const qint64 at = FileHeader + bitmap.HeaderBytes + colorBytes * i;
    Append(header, i < bitmap.Colors ? LittleEndian(file, at, 3) : 0, 4);  // Those left out are black.
  }
  return header;
}

}  // namespace

// There are more ways of writing a bitmap's header than the decoder knows, all of which occur.
std::optional<Claim> ClaimOfBitmap(QByteArray& file) {
  if (!file.startsWith("BM")) file.prepend(QByteArray(FileHeader, '\0'));
  const Bitmap bitmap = ReadHeader(file);
  constexpr qint64 Most = 1 << 26;
  if (bitmap.Width <= 0 || bitmap.Rows() <= 0 || bitmap.Width > Most || bitmap.Rows() > Most ||
      !IsKnown(bitmap))
    return {};
  const bool runs = bitmap.Packing == Rle8 || bitmap.Packing == Rle4;
  const bool isWhole = runs ? RunsAreWhole(file, bitmap) : file.size() - bitmap.Data >= bitmap.DataBytes();
  if (!isWhole) return {};
  file.replace(0, bitmap.Data, PlainHeader(file, bitmap));
  // The last row's filling may be missing.
  file.append(3, '\0');
  return Claim{QSize(static_cast<int>(bitmap.Width), static_cast<int>(bitmap.Rows())),
               bitmap.Bits <= 8 ? 5 : 4, 0, 0};
}

}  // namespace veldrin::pictures
