// The length of a text as the catalogue counts it: in whole characters. One beyond the first 65,536, such as
// an emoji, takes two places of a text in memory.
#pragma once

#include <QString>

namespace veldrin::base {

/// The number of whole characters. Half of one that stands alone counts as one.
qsizetype TextLength(QStringView text);

/// The place where the `count` whole characters in front of `end` begin; 0 when there are not so many.
qsizetype PlaceBefore(QStringView text, qsizetype end, qsizetype count);

/// The first `length` whole characters.
QString CutText(const QString& text, qsizetype length);

}  // namespace veldrin::base
