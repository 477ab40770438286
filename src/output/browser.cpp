#include "output/browser.h"

#include <QFileInfo>

#include "desktop/program_start.h"
#include "output/page_names.h"

namespace veldrin::output {

void ShowPageInBrowser(const QString& browserPath, const QString& dir, bool gallery) {
  const QString page = dir + PageName(gallery, 1);
  if (QFileInfo::exists(page)) desktop::Shell(browserPath + QLatin1Char(' ') + page);
}

}  // namespace veldrin::output
