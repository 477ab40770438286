#include "catalogue/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "base/file_identity.h"

namespace veldrin::catalogue {

QStringList OwnDirectories(const Paths& paths) {
  const QDir program(QFileInfo(QFileInfo(paths.IniFile).path()).path());
  return {paths.ImageDir,
          paths.ThumbDir,
          paths.MusicDir,
          paths.TempDir,
          paths.MailDir,
          QFileInfo(paths.DatabaseFile).path(),
          QFileInfo(paths.IniFile).path(),
          QCoreApplication::applicationDirPath(),
          program.path(),
          program.filePath(QStringLiteral("help")),
          program.filePath(QStringLiteral("Database")),
          program.filePath(QStringLiteral("Database/Images")),
          program.filePath(QStringLiteral("Database/Images/Thumbnails")),
          program.filePath(QStringLiteral("Database/Music"))};
}

bool IsOwnDirectory(const Paths& paths, const QString& directory) {
  const auto identity = base::IdentityOf(directory);
  const QStringList own = OwnDirectories(paths);
  return identity && std::any_of(own.begin(), own.end(),
                                 [&](const QString& path) { return base::IdentityOf(path) == identity; });
}

}  // namespace veldrin::catalogue
