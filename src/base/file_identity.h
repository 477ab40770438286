// Which file stands under a name.
#pragma once

#include <sys/stat.h>

#include <QString>
#include <optional>

namespace veldrin::base {

/// The same for all names of a file, and for no other file while it exists.
struct FileIdentity {
  dev_t Device = 0;
  ino_t Number = 0;
  bool operator==(const FileIdentity&) const = default;
};

/// What tells whether a file is still what it was when it was read.
struct FileState {
  FileIdentity Is;
  qint64 Size = 0;
  qint64 Changed = 0;  ///< the time of its last change, in nanoseconds
  bool operator==(const FileState&) const = default;
};

/// Nothing where no file or directory is. A link is taken for what it leads to.
std::optional<FileState> StateOf(const QString& path);
/// Of what stat told.
FileState StateOf(const struct stat& status);

/// Nothing where no file or directory is. A link is taken for what it leads to.
std::optional<FileIdentity> IdentityOf(const QString& path);

}  // namespace veldrin::base
