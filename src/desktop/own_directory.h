// Directories of this user's own below places open to everyone.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// Raises 76 when there is nothing at the path, 70 when it is a link, no directory, or someone else's: what
/// is written there could be read and changed by others.
void RequireOwnDirectory(QString directory);

/// The path of a directory of this user's own below a place open to everyone, to be made by the caller where
/// it isn't there. It has the name, or where something else has that, the name with a suffix that nobody can
/// guess: no one on the machine keeps another from having one. The same for every call, once it is made.
QString OwnDirectoryBelow(const QString& place, const QString& name);

/// Tells what this user's programs on this machine make from all others', in a place that they share; the
/// same after a restart of either. What is given besides tells between programs of one user.
QString OwnMark(const QByteArray& besides = {});

}  // namespace veldrin::desktop
