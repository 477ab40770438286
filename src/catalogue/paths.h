// Where everything of a run lies. Filled once at start; a change of the configuration takes effect at the
// next.
#pragma once

#include <QString>

namespace veldrin::catalogue {

struct Paths {
  QString IniFile;
  QString DatabaseFile;
  QString ImageDir;     ///< ends in a separator
  QString ThumbDir;     ///< ends in a separator
  QString MusicDir;     ///< ends in a separator
  QString TempDir;      ///< ends in a separator
  QString BrowserPath;  ///< a program, perhaps with blanks
  QString WorkFile;     ///< the working copy, by which all tables are reached
};

}  // namespace veldrin::catalogue
