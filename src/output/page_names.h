// The names of the pages that are written.
#pragma once

#include <QString>

namespace veldrin::output {

/// The name that all pages of a kind begin with: thumbnails, or a list of texts.
inline QString PagePrefix(bool gallery) {
  return gallery ? QStringLiteral("PhotoImage_pg") : QStringLiteral("PhotoData_pg");
}

/// `page` counts from 1.
inline QString PageName(bool gallery, int page) {
  return PagePrefix(gallery) + QString::number(page) + QStringLiteral(".htm");
}

}  // namespace veldrin::output
