#include "catalogue/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>

namespace veldrin::catalogue {

namespace {

std::filesystem::path NativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

// Two ways to the same directory, through links and mounts too.
bool IsSameDirectory(const QString& one, const QString& other) {
  std::error_code missing;
  return std::filesystem::equivalent(NativePath(one), NativePath(other), missing);
}

}  // namespace

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
  const QStringList own = OwnDirectories(paths);
  return std::any_of(own.begin(), own.end(),
                     [&](const QString& path) { return IsSameDirectory(directory, path); });
}

}  // namespace veldrin::catalogue
