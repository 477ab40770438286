// Whether a file's locks hold between all who open it.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// Empty where they hold as far as a machine can know, and otherwise why they don't, for people. On a file
/// system of a network or of a program two openings of the file try a lock against each other; that locks
/// stay on this machine is told by the mount's options. To be called while this program holds no lock on the
/// file: it would lose it.
QString WhyLocksFail(const QString& file);

/// What a mount tells of its locks: its type ("nfs4", "cifs", "fuse.sshfs") and its options, between commas.
struct MountLocks {
  bool MustBeTried = false;  ///< the files are not a disk's of this machine
  QString StayHere;          ///< the option that keeps locks on this machine; empty for none
};
MountLocks LocksOf(const QString& type, const QString& options);

}  // namespace veldrin::desktop
