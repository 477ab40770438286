// Copies of files that are whole when they have their name, and that can be made safe against a crash.
#pragma once

#include <QString>
#include <memory>

#include "base/file_identity.h"
#include "desktop/new_file.h"

namespace veldrin::desktop {

/// Copies a regular file's bytes and its time of change, where the target takes one. A file or link that
/// stands under the target's name is replaced when the copy is whole. Raises 70 where source and target are
/// the same file, which stays as it is. Raises 53 for a source that can't be opened or isn't a regular file,
/// 76 for a missing target directory, 61 where the disk is full, 75 otherwise; what stood under the target's
/// name is still there then, and nothing else.
void CopyFile(const QString& source, const QString& target);

/// The same for a file of the catalogue's, which is never a link: raises 70 for one, which may lead to
/// anybody's file.
void CopyStoredFile(const QString& source, const QString& target);

/// Such a copy, made by the constructor, that is to be safe against a power cut: after Flush it is.
class FileCopy {
 public:
  /// Raises what CopyFile raises, 75 for a source that another program writes to or changes meanwhile.
  FileCopy(const QString& source, const QString& target);

  /// Waits until the bytes are on the disk. Raises 61 or 75.
  void Flush();

  /// What the source was when its bytes were read.
  const base::FileState& Source() const { return TheSource; }

 private:
  base::FileState TheSource;
  QString Target;
  std::unique_ptr<NewFile> File;
};

/// Deletes a file of which all is stored elsewhere. Raises 75 when it isn't in that state any more, when
/// another program may be writing to it, or when it can't be deleted; it is still there then.
void RemoveUnchanged(const QString& path, const base::FileState& state);

/// Makes renamings and new names in a directory safe against a power cut. Raises 76 or 75.
void SyncDirectory(const QString& directory);

/// Renames a file within a file system, never over one that exists: returns false then. Raises 53, 61 or 75.
bool RenameToFree(const QString& from, const QString& to);

}  // namespace veldrin::desktop
