#include "output/code_page.h"

#include <QList>
#include <algorithm>
#include <iterator>

namespace veldrin::output {

namespace {

// The characters of the bytes from 0x80 to 0x9F; 0 for a byte without one. All others are those of Latin-1.
constexpr char16_t MiddleBytes[] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
constexpr char32_t FirstMiddle = 0x80;
constexpr char32_t BehindMiddle = 0xA0;
constexpr char32_t BehindLatin1 = 0x100;

// The byte of a character; -1 where it has none.
int ByteOf(char32_t character) {
  if (character < FirstMiddle) return static_cast<int>(character);
  if (character < BehindMiddle) return -1;
  if (character < BehindLatin1) return static_cast<int>(character);
  const auto* found = std::find(std::begin(MiddleBytes), std::end(MiddleBytes), character);
  if (found == std::end(MiddleBytes)) return -1;
  return static_cast<int>(FirstMiddle) + static_cast<int>(found - std::begin(MiddleBytes));
}

}  // namespace

QByteArray ToCodePage(const QString& text) {
  const auto isAscii = [](QChar character) { return character.unicode() < FirstMiddle; };
  if (std::all_of(text.begin(), text.end(), isAscii)) return text.toLatin1();
  QByteArray bytes;
  bytes.reserve(text.size());
  // Half a pair of surrogates comes as the replacement character.
  for (const char32_t character : text.toUcs4()) {
    if (const int byte = ByteOf(character); byte >= 0) {
      bytes += static_cast<char>(byte);
    } else {
      bytes += "&#" + QByteArray::number(static_cast<uint>(character)) + ';';
    }
  }
  return bytes;
}

}  // namespace veldrin::output
