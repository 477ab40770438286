// The directory of a web export.
#pragma once

#include <QStringList>

#include "catalogue/paths.h"

namespace veldrin::output {

QString WebImageDir(const QString& webDir);
QString WebThumbDir(const QString& webDir);

/// Whether an export there would write into a directory of the program itself, such as the catalogue's, by
/// whatever way that is reached.
bool IsProgramsOwn(const catalogue::Paths& paths, const QString& webDir);

/// Deletes the files that match a pattern directly in a directory, and links themselves. Neither enters a
/// link nor touches directories and hidden files. Passes over what can't be deleted.
void DeleteFiles(const QString& directory, const QString& pattern);

/// What DeleteWeb would delete and no export can have written, as paths from the web directory on, in order.
QStringList OtherFilesOfWeb(const catalogue::Paths& paths, const QString& parent, const QString& name);

/// Deletes the earlier export that a directory holds: all its files, those of its two directories, and the
/// thumbnails' one. Leaves a directory alone that `name` doesn't make a step directly below `parent`, and any
/// of the program's own. Passes over what can't be deleted.
void DeleteWeb(const catalogue::Paths& paths, const QString& parent, const QString& name);

/// Passes over what can't be made.
void MakeWebDirectories(const QString& webDir, bool gallery);

}  // namespace veldrin::output
