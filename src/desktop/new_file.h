// A file that is whole when it has its name.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// Grows beside its target, under a name that no one but this user's program on this machine gives. What a
/// killed program left under such names is cleared by the first new file of a run in the same directory. Safe
/// on any thread, for different targets.
class NewFile {
 public:
  /// Raises 76 for a missing directory, 61 where the disk is full, 75 otherwise.
  explicit NewFile(const QString& target);
  /// Deletes the file unless it is in place.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Open for writing, for the life of the object.
  int Descriptor() const { return File; }

  /// Adds bytes at the end. Raises 61 or 75.
  void Write(const char* bytes, qint64 count);

  /// Gives the file its name. A file or link that has the name is replaced. Raises 61 or 75.
  void PutInPlace();

 private:
  QString Target;
  QString Part;
  int File = -1;
  bool InPlace = false;
};

/// Raises what the system's error number means for a file: 53, 61 or 75.
[[noreturn]] void RaiseFileError(int error, const QString& path);

}  // namespace veldrin::desktop
