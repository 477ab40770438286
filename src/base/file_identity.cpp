#include "base/file_identity.h"

#include <sys/stat.h>

#include <QFile>

namespace veldrin::base {

std::optional<FileIdentity> IdentityOf(const QString& path) {
  struct stat status {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
  return FileIdentity{status.st_dev, status.st_ino};
}

}  // namespace veldrin::base
