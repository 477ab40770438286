#include <algorithm>
#include <array>

#include "pictures/claim.h"

namespace veldrin::pictures {

namespace {

qint64 ColorTableBytes(qint64 flags) { return (flags & 0x80) != 0 ? 3LL << ((flags & 7) + 1) : 0; }

qint64 AfterBlocks(const QByteArray& file, qint64 at) {
  while (const qint64 size = LittleEndian(file, at, 1)) at += 1 + size;
  return at + 1;
}

// The place of the first frame's descriptor.
qint64 FirstFrame(const QByteArray& file) {
  qint64 at = 13 + ColorTableBytes(LittleEndian(file, 10, 1));
  while (at < file.size() && file[at] == '!') at = AfterBlocks(file, at + 2);
  return at < file.size() && file[at] == ',' ? at : -1;
}

// Counts the pixels of which packed data tell, without making them.
class PixelCounter {
 public:
  explicit PixelCounter(int bits) : First(1 << bits), Start(bits + 1) { Clear(); }

  qint64 Pixels() const { return Count; }
  bool AtEnd() const { return Ended; }

  void Add(uchar byte) {
    if (Ended) return;
    Held |= static_cast<unsigned>(byte) << HeldBits;
    HeldBits += 8;
    while (HeldBits >= Width && !Ended) {
      const unsigned code = Held & ((1U << Width) - 1);
      Held >>= Width;
      HeldBits -= Width;
      Take(static_cast<int>(code));
    }
  }

 private:
  void Clear() {
    Next = First + 2;
    Width = Start;
    Last = 0;
  }

  void Take(int code) {
    if (code == First) return Clear();
    if (code == First + 1) {
      Ended = true;
      return;
    }
    const int length = code < First ? 1 : code < Next ? Lengths[static_cast<size_t>(code)] : Last + 1;
    Count += length;
    if (Last > 0 && Next < MostCodes) Lengths[static_cast<size_t>(Next++)] = Last + 1;
    Last = length;
    if (Next == 1 << Width && Width < 12) ++Width;
  }

  static constexpr int MostCodes = 4096;
  std::array<int, MostCodes> Lengths{};
  int First;
  int Start;
  int Width = 0;
  int Next = 0;
  int Last = 0;
  unsigned Held = 0;
  int HeldBits = 0;
  qint64 Count = 0;
  bool Ended = false;
};

}  // namespace

// Of an animation the first frame is shown; what follows its last pixel is cut off, further frames as well as
// data that would go on and on.
std::optional<Claim> ClaimOfGif(QByteArray& file) {
  const qint64 frame = FirstFrame(file);
  const auto number = [&](qint64 at) { return static_cast<int>(LittleEndian(file, at, 2)); };
  QSize size(number(6), number(8));
  if (size.width() == 0) size.setWidth(number(frame + 1) + number(frame + 5));
  if (size.height() == 0) size.setHeight(number(frame + 3) + number(frame + 7));
  const qint64 pixels = static_cast<qint64>(number(frame + 5)) * number(frame + 7);
  qint64 at = frame + 10 + ColorTableBytes(LittleEndian(file, frame + 9, 1));
  const auto bits = static_cast<int>(LittleEndian(file, at++, 1));
  if (frame < 0 || bits < 1 || bits > 11) return {};
  PixelCounter counter(bits);
  while (counter.Pixels() < pixels && !counter.AtEnd() && LittleEndian(file, at, 1) != 0) {
    const qint64 end = std::min<qint64>(file.size(), at + 1 + LittleEndian(file, at, 1));
    while (++at < end) counter.Add(static_cast<uchar>(file[at]));
  }
  if (counter.Pixels() == 0) return {};
  file.truncate(at);
  file.append(QByteArrayView("\0;", 2));
  return Claim{size, 8, 0, 0};
}

}  // namespace veldrin::pictures
