// Which file stands under a name.
#pragma once

#include <sys/types.h>

#include <QString>
#include <optional>

namespace veldrin::base {

/// The same for all names of a file, and for no other file while it exists.
struct FileIdentity {
  dev_t Device = 0;
  ino_t Number = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// Nothing where no file or directory is. A link is taken for what it leads to.
std::optional<FileIdentity> IdentityOf(const QString& path);

}  // namespace veldrin::base
