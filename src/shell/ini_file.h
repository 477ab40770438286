// Reads and writes single values of an ini file: "[section]" lines and "key=value" lines, names without
// regard to case.
#pragma once

#include <QString>

namespace veldrin::shell {

/// The value without blanks and quotes around it, cut to `size` - 1 characters; empty when the file, the
/// section or the key is missing. Lines that make no sense are passed over.
QString GetPrivateProfileString(const QString& section, const QString& key, const QString& file, int size);

/// Writes one value and keeps all other keys and comments. The file is replaced as a whole; one that is
/// missing is made, but not its directory. Returns whether it was written.
bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& file);

}  // namespace veldrin::shell
