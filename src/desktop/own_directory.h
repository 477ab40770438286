// The check that a directory below a place open to everyone is this user's own.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// Raises 76 when there is nothing at the path, 70 when it is a link, no directory, or someone else's: what
/// is written there could be read and changed by others.
void RequireOwnDirectory(QString directory);

}  // namespace veldrin::desktop
