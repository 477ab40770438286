#include "output/web_directory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>

namespace veldrin::output {

namespace {

const QString AllFiles = QStringLiteral("*");

std::filesystem::path NativePath(const QString& path) { return QFile::encodeName(path).toStdString(); }

// Two ways to the same directory, through links and mounts too.
bool IsSameDirectory(const QString& one, const QString& other) {
  std::error_code missing;
  return std::filesystem::equivalent(NativePath(one), NativePath(other), missing);
}

// A name that leads one step down, and no other way.
bool IsPlainName(const QString& name) {
  return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
         !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null);
}

}  // namespace

QString WebImageDir(const QString& webDir) { return webDir + QStringLiteral("/Images"); }
QString WebThumbDir(const QString& webDir) { return webDir + QStringLiteral("/Thumbnails"); }

bool IsProgramsOwn(const catalogue::Paths& paths, const QString& webDir) {
  const QDir program(QFileInfo(QFileInfo(paths.IniFile).path()).path());
  // The program's first catalogue, with what every start needs, stays where it is when another one is used.
  const QString own[] = {paths.ImageDir,
                         paths.ThumbDir,
                         paths.MusicDir,
                         paths.TempDir,
                         QFileInfo(paths.DatabaseFile).path(),
                         QFileInfo(paths.IniFile).path(),
                         QCoreApplication::applicationDirPath(),
                         program.path(),
                         program.filePath(QStringLiteral("help")),
                         program.filePath(QStringLiteral("Database")),
                         program.filePath(QStringLiteral("Database/Images")),
                         program.filePath(QStringLiteral("Database/Images/Thumbnails")),
                         program.filePath(QStringLiteral("Database/Music"))};
  const QString written[] = {webDir, WebImageDir(webDir), WebThumbDir(webDir)};
  return std::any_of(std::begin(own), std::end(own), [&](const QString& directory) {
    return std::any_of(std::begin(written), std::end(written),
                       [&](const QString& place) { return IsSameDirectory(place, directory); });
  });
}

void DeleteFiles(const QString& directory, const QString& pattern) {
  if (QFileInfo(directory).isSymLink()) return;
  const auto entries = QDir(directory).entryInfoList(
      {pattern}, QDir::Files | QDir::Dirs | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
  for (const QFileInfo& entry : entries) {
    if (entry.isSymLink() || entry.isFile()) QFile::remove(entry.filePath());
  }
}

void DeleteWeb(const catalogue::Paths& paths, const QString& parent, const QString& name) {
  const QString webDir = parent + QLatin1Char('/') + name;
  if (!IsPlainName(name) || QFileInfo(webDir).isSymLink() || IsProgramsOwn(paths, webDir)) return;
  // A link at Images or Thumbnails goes with the files.
  DeleteFiles(webDir, AllFiles);
  DeleteFiles(WebImageDir(webDir), AllFiles);
  DeleteFiles(WebThumbDir(webDir), AllFiles);
  QDir().rmdir(WebThumbDir(webDir));
}

void MakeWebDirectories(const QString& webDir, bool gallery) {
  QDir().mkdir(webDir);
  QDir().mkdir(WebImageDir(webDir));
  if (gallery) QDir().mkdir(WebThumbDir(webDir));
}

}  // namespace veldrin::output
