#include "output/browser.h"

#include <QFileInfo>

#include "output/page_names.h"
#include "platform/program_start.h"

namespace veldrin::output {

void ShowPageInBrowser(const QString& browserPath, const QString& dir, bool gallery) {
  const QString page = dir + PageName(gallery, 1);
  if (QFileInfo::exists(page)) platform::Shell(browserPath + QLatin1Char(' ') + page);
}

}  // namespace veldrin::output
