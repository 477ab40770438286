// Where everything of a run lies. Filled once at start; a change of the configuration takes effect at the
// next.
#pragma once

#include <QStringList>

namespace veldrin::catalogue {

struct Paths {
  QString IniFile;
  QString DatabaseFile;
  QString ImageDir;     ///< ends in a separator
  QString ThumbDir;     ///< ends in a separator
  QString MusicDir;     ///< ends in a separator
  QString TempDir;      ///< ends in a separator
  QString MailDir;      ///< ends in a separator; what is copied for messages, made when it is needed
  QString BrowserPath;  ///< a program, perhaps with blanks
  QString WorkFile;     ///< the working copy, by which all tables are reached
};

/// The directories of the program itself: nothing that the user asks for is written there, and no file there
/// is deleted for another. Beside those of the run they are the program's and those of its first catalogue,
/// which stays where it is when another one is used.
QStringList OwnDirectories(const Paths& paths);

/// Whether a directory is one of them, by whatever way it is reached.
bool IsOwnDirectory(const Paths& paths, const QString& directory);

}  // namespace veldrin::catalogue
