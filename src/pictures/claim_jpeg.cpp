#include <algorithm>
#include <vector>

#include "pictures/claim.h"

namespace veldrin::pictures {

namespace {

constexpr qint64 BlockBytes = 64 * sizeof(qint16);

struct Component {
  qint64 Id = 0;
  qint64 Blocks = 0;
};

struct Frame {
  Claim Picture;
  std::vector<Component> Components;
  bool Progressive = false;
};

bool HasLength(int marker) { return marker >= 0xC0 && !(marker >= 0xD0 && marker <= 0xD9); }
bool IsFrame(int marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

std::optional<Frame> FrameAt(const QByteArray& file, qint64 at, int marker) {
  const qint64 height = BigEndian(file, at + 3, 2);
  const qint64 width = BigEndian(file, at + 5, 2);
  const qint64 count = BigEndian(file, at + 7, 1);
  if (width == 0 || height == 0 || count == 0 || count > 4) return {};
  Frame frame;
  frame.Picture.Size = QSize(static_cast<int>(width), static_cast<int>(height));
  frame.Progressive = marker == 0xC2 || marker == 0xCA;
  qint64 across = 1;
  qint64 down = 1;
  const auto sampling = [&](qint64 i) { return BigEndian(file, at + 9 + 3 * i, 1); };
  for (qint64 i = 0; i < count; ++i) {
    across = std::max(across, sampling(i) / 16);
    down = std::max(down, sampling(i) % 16);
  }
  if (across > 4 || down > 4) return {};
  const qint64 units = ((width - 1) / (8 * across) + 1) * ((height - 1) / (8 * down) + 1);
  for (qint64 i = 0; i < count; ++i) {
    frame.Components.push_back(
        {BigEndian(file, at + 8 + 3 * i, 1), units * (sampling(i) / 16) * (sampling(i) % 16)});
  }
  return frame;
}

// The place of the next marker that is more than a part of the picture's data, of its second byte.
qint64 NextMarker(const QByteArray& file, qint64 at) {
  while ((at = file.indexOf('\xFF', at)) >= 0 && ++at < file.size()) {
    const auto marker = static_cast<uchar>(file[at]);
    if (marker == 0xFF) continue;  // A fill byte.
    if (marker >= 0xC0 && (marker < 0xD0 || marker > 0xD7)) return at;
  }
  return -1;
}

bool HasData(const QByteArray& file, qint64 at) {
  while (at + 1 < file.size() && file[at] == '\xFF' && file[at + 1] == '\xFF') ++at;
  return at < file.size() && NextMarker(file, at) != at + 1;
}

qint64 BlocksOfScan(const QByteArray& file, qint64 at, const Frame& frame) {
  qint64 blocks = 0;
  for (qint64 i = 0; i < BigEndian(file, at + 2, 1); ++i) {
    const qint64 id = BigEndian(file, at + 3 + 2 * i, 1);
    for (const Component& component : frame.Components) {
      if (component.Id == id) blocks += component.Blocks;
    }
  }
  return blocks;
}

}  // namespace

// Of a JPEG with several scans a decoder keeps all coefficients at full size, goes through all scans, and
// only then gives out the first row.
std::optional<Claim> ClaimOfJpeg(const QByteArray& file) {
  std::optional<Frame> frame;
  bool hasData = false;
  for (qint64 at = 2; (at = NextMarker(file, at)) >= 0;) {
    const int marker = static_cast<uchar>(file[at++]);
    if (!HasLength(marker)) break;  // The end.
    const qint64 length = BigEndian(file, at, 2);
    if (IsFrame(marker)) {
      if (frame) return {};
      frame = FrameAt(file, at, marker);
      if (!frame) return {};
    } else if (marker == 0xDA) {
      if (!frame) return {};
      frame->Picture.Steps += BlocksOfScan(file, at, *frame);
      if (!hasData && !HasData(file, at + length)) return {};
      if (!hasData) {
        const bool severalScans = BigEndian(file, at + 2, 1) < static_cast<qint64>(frame->Components.size());
        if (!frame->Progressive && !severalScans) return frame->Picture;
        for (const Component& component : frame->Components)
          frame->Picture.FixedBytes += component.Blocks * BlockBytes;
      }
      hasData = true;
    }
    at += length;
  }
  if (!hasData) return {};
  return frame->Picture;
}

}  // namespace veldrin::pictures
