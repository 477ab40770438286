#include "base/text_length.h"

#include <algorithm>

namespace veldrin::base {

namespace {

bool IsPairAt(QStringView text, qsizetype place) {
  return text[place].isHighSurrogate() && place + 1 < text.size() && text[place + 1].isLowSurrogate();
}

}  // namespace

qsizetype TextLength(QStringView text) {
  qsizetype length = 0;
  for (qsizetype place = 0; place < text.size(); ++length) place += IsPairAt(text, place) ? 2 : 1;
  return length;
}

qsizetype PlaceBefore(QStringView text, qsizetype end, qsizetype count) {
  for (; count > 0 && end > 0; --count) end -= end > 1 && IsPairAt(text, end - 2) ? 2 : 1;
  return end;
}

QString CutText(const QString& text, qsizetype length) {
  const qsizetype excess = std::max<qsizetype>(TextLength(text) - length, 0);
  return text.left(PlaceBefore(text, text.size(), excess));
}

}  // namespace veldrin::base
