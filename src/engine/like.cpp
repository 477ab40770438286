#include "engine/like.h"

#include <QList>
#include <algorithm>

namespace veldrin::engine {

namespace {

constexpr unsigned char TwoBytesFirst = 0xC2;
constexpr unsigned char ThreeBytesFirst = 0xE0;
constexpr char32_t FirstOfTwoBytes = 0x80;
constexpr size_t TwoByteCharacters = 0x800 - 0x80;

unsigned char ByteAt(std::string_view text, size_t at) { return static_cast<unsigned char>(text[at]); }
bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

std::string Utf8Of(char32_t c) { return QString::fromUcs4(&c, 1).toStdString(); }

// The folded forms of the characters of two bytes: Latin, Greek, Cyrillic and more.
struct FoldedCharacter {
  std::array<char, 7> Bytes;
  unsigned char Length;
};

using FoldedTable = std::array<FoldedCharacter, TwoByteCharacters>;

FoldedTable MakeFoldedTable() {
  FoldedTable table{};
  for (size_t i = 0; i < table.size(); ++i) {
    const char32_t c = FirstOfTwoBytes + static_cast<char32_t>(i);
    const QByteArray folded = QString::fromUcs4(&c, 1).toCaseFolded().toUtf8();
    Q_ASSERT(static_cast<size_t>(folded.size()) <= table[i].Bytes.size());
    std::copy(folded.begin(), folded.end(), table[i].Bytes.begin());
    table[i].Length = static_cast<unsigned char>(folded.size());
  }
  return table;
}

bool IsTwoBytes(std::string_view text, size_t at) {
  return ByteAt(text, at) >= TwoBytesFirst && ByteAt(text, at) < ThreeBytesFirst && at + 1 < text.size() &&
         (ByteAt(text, at + 1) & 0xC0U) == 0x80;
}

// Without an end on the way, so that it runs over many bytes at once.
bool IsAsciiText(std::string_view text) {
  unsigned char bits = 0;
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  return bits < 0x80;
}

void FoldAll(std::string_view text, std::string& folded) {
  size_t at = 0;
  static const FoldedTable table = MakeFoldedTable();
  while (at < text.size()) {
    if (IsAscii(text[at])) {
      folded += LowerAscii(text[at++]);
    } else if (IsTwoBytes(text, at)) {
      const auto code =
          static_cast<char32_t>((ByteAt(text, at) & 0x1FU) << 6U | (ByteAt(text, at + 1) & 0x3FU));
      const FoldedCharacter& character = table[code - FirstOfTwoBytes];
      folded.append(character.Bytes.data(), character.Length);
      at += 2;
    } else {
      const auto* end = std::find_if(text.begin() + at, text.end(), IsAscii);
      const auto length = static_cast<size_t>(end - (text.begin() + at));
      folded +=
          QString::fromUtf8(text.data() + at, static_cast<qsizetype>(length)).toCaseFolded().toStdString();
      at += length;
    }
  }
}

size_t CharacterLength(std::string_view folded) {
  const unsigned char lead = ByteAt(folded, 0);
  const size_t length = lead < 0x80 ? 1 : lead < ThreeBytesFirst ? 2 : lead < 0xF0 ? 3 : 4;
  return std::min(length, folded.size());
}

char32_t Character(std::string_view folded, size_t length) {
  if (length == 1) return ByteAt(folded, 0);
  char32_t c = ByteAt(folded, 0) & (0x7FU >> length);
  for (size_t i = 1; i < length; ++i) c = c << 6U | (ByteAt(folded, i) & 0x3FU);
  return c;
}

}  // namespace

void FoldCase(std::string_view text, std::string& folded) {
  if (IsAsciiText(text)) {
    folded.resize(text.size());
    std::transform(text.begin(), text.end(), folded.begin(), LowerAscii);
  } else {
    folded.clear();
    FoldAll(text, folded);
  }
}

int CompareFolded(std::string_view left, std::string_view right) {
  const size_t length = std::min(left.size(), right.size());
  for (size_t i = 0;; ++i) {
    if (i == length) return static_cast<int>(left.size() > length) - static_cast<int>(right.size() > length);
    if (!IsAscii(left[i]) || !IsAscii(right[i])) break;
    if (const int difference = LowerAscii(left[i]) - LowerAscii(right[i]); difference != 0) return difference;
  }
  std::string foldedLeft;
  std::string foldedRight;
  FoldCase(left, foldedLeft);
  FoldCase(right, foldedRight);
  return foldedLeft.compare(foldedRight);
}

// --- Like -------------------------------------------------------------------------------------------------

LikePattern::LikePattern(std::string_view pattern) {
  std::string folded;
  FoldCase(pattern, folded);
  const QList<uint> characters = QString::fromStdString(folded).toUcs4();
  for (size_t at = 0; at < static_cast<size_t>(characters.size());) {
    const char32_t c = characters[static_cast<qsizetype>(at)];
    if (c == U'[') {
      at = AddSet(characters, at);
      continue;
    }
    ++at;
    if (c == U'*') {
      Items.push_back({Kind::Star});
    } else if (c == U'?') {
      Items.push_back({Kind::Any});
    } else if (c == U'#') {
      Items.push_back({Kind::Digit});
    } else {
      AddLiteral(c);
    }
  }
  const bool containment = Items.size() == 3 && Items[0].Is == Kind::Star && Items[1].Is == Kind::Literal &&
                           Items[2].Is == Kind::Star;
  if (containment) Part.emplace(Items[1].Text.begin(), Items[1].Text.end());
}

void LikePattern::AddLiteral(char32_t c) {
  if (Items.empty() || Items.back().Is != Kind::Literal) Items.push_back({Kind::Literal});
  Items.back().Text += Utf8Of(c);
}

// The set whose bracket stands at `at`; gives the place behind it.
size_t LikePattern::AddSet(const QList<uint>& pattern, size_t at) {
  const auto close = static_cast<size_t>(pattern.indexOf(U']', static_cast<qsizetype>(at) + 1));
  // An empty set and an open one are no sets.
  if (close == static_cast<size_t>(-1) || close == at + 1) {
    AddLiteral(U'[');
    return at + 1;
  }
  const auto character = [&](size_t i) { return static_cast<char32_t>(pattern[static_cast<qsizetype>(i)]); };
  Item set{Kind::Set};
  set.None = character(at + 1) == U'!';
  for (size_t i = set.None ? at + 2 : at + 1; i < close; ++i) {
    const bool range = i + 2 < close && character(i + 1) == U'-';
    set.Ranges.push_back({character(i), character(range ? i + 2 : i)});
    if (range) i += 2;
  }
  Items.push_back(std::move(set));
  return close + 1;
}

// How many bytes the item, which isn't a star, takes from the start of the text, which isn't empty; 0 where
// it doesn't match.
size_t LikePattern::MatchItem(const Item& item, std::string_view text) {
  if (item.Is == Kind::Literal) return text.starts_with(item.Text) ? item.Text.size() : 0;
  const size_t length = CharacterLength(text);
  if (item.Is == Kind::Any) return length;
  const char32_t c = Character(text, length);
  if (item.Is == Kind::Digit) return QChar::isDigit(c) ? length : 0;
  const bool found = std::any_of(item.Ranges.begin(), item.Ranges.end(),
                                 [c](const Range& range) { return range.First <= c && c <= range.Last; });
  return found != item.None ? length : 0;
}

// The next place from `at` on where the item behind a star can begin; the text's size where there is none.
size_t LikePattern::NextStart(size_t item, std::string_view folded, size_t at) const {
  if (item == Items.size() || Items[item].Is != Kind::Literal) return at;
  return std::min(folded.find(Items[item].Text, at), folded.size());
}

bool LikePattern::MatchesItems(std::string_view text) const {
  constexpr auto noStar = static_cast<size_t>(-1);
  size_t item = 0;
  size_t at = 0;
  // Where to go on when the match fails: behind the last * seen, one character further in the text.
  size_t starItem = noStar;
  size_t starAt = 0;
  while (at < text.size()) {
    if (item < Items.size() && Items[item].Is == Kind::Star) {
      starItem = ++item;
      at = starAt = NextStart(starItem, text, at);
      continue;
    }
    if (item < Items.size()) {
      if (const size_t length = MatchItem(Items[item], text.substr(at)); length > 0) {
        at += length;
        ++item;
        continue;
      }
    }
    if (starItem == noStar) return false;
    item = starItem;
    at = starAt = NextStart(starItem, text, starAt + CharacterLength(text.substr(starAt)));
  }
  return std::all_of(Items.begin() + static_cast<std::ptrdiff_t>(item), Items.end(),
                     [](const Item& left) { return left.Is == Kind::Star; });
}

bool LikePattern::Matches(std::string_view text) const {
  // Kept, so that a scan over many rows asks for memory once.
  thread_local std::string folded;
  FoldCase(text, folded);
  return Part ? std::search(folded.begin(), folded.end(), *Part) != folded.end() : MatchesItems(folded);
}

}  // namespace veldrin::engine
