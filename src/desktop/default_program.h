// The programs that the desktop has registered for types of files and of addresses.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// The name under which the desktop knows the default program for files with this extension, such as
/// "org.kde.gwenview.desktop"; empty when there is none. `extension`: with the dot.
QString GetExtensionClass(const QString& extension);

/// The same for addresses of a scheme, such as "mailto".
QString GetSchemeClass(const QString& scheme);

/// Hands the file itself to the program of that name, by the program's default action, and does not wait for
/// it. Raises 429 when there is no such program or it can't be started.
void OpenWithProgram(const QString& programClass, const QString& file);

}  // namespace veldrin::desktop
