// Starts other programs.
#pragma once

#include <QString>

namespace veldrin::desktop {

/// Starts a program with a normal window and does not wait for it. The program is the shortest leading run of
/// words that names an executable file, looked for in PATH when it has no "/"; all behind it is one argument,
/// so that both may hold blanks. Raises 53 when there is no such program or it can't be started.
void Shell(const QString& commandLine);

}  // namespace veldrin::desktop
