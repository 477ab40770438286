#include "desktop/own_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>

#include "base/runtime_error.h"

namespace veldrin::desktop {

void RequireOwnDirectory(QString directory) {
  // With its separator at the end the name of a link would stand for what the link leads to.
  while (directory.size() > 1 && directory.endsWith(QLatin1Char('/'))) directory.chop(1);
  struct stat status {};
  if (::lstat(QFile::encodeName(directory).constData(), &status) != 0) {
    throw base::RuntimeError(base::errPathNotFound, QStringLiteral("Path not found: %1").arg(directory));
  }
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) {
    throw base::RuntimeError(base::errPermissionDenied,
                             QStringLiteral("Permission denied: %1").arg(directory));
  }
}

}  // namespace veldrin::desktop
