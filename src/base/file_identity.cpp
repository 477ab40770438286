#include "base/file_identity.h"

#include <sys/stat.h>

#include <QFile>

namespace veldrin::base {

std::optional<FileState> StateOf(const QString& path) {
  struct stat status {};
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
  return StateOf(status);
}

FileState StateOf(const struct stat& status) {
  constexpr qint64 second = 1'000'000'000;
  return {{status.st_dev, status.st_ino},
          status.st_size,
          status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

std::optional<FileIdentity> IdentityOf(const QString& path) {
  const auto state = StateOf(path);
  return state ? std::optional(state->Is) : std::nullopt;
}

}  // namespace veldrin::base
