#include "output/web_directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace veldrin::output {

namespace {

// A name that leads one step down, and no other way.
bool IsPlainName(const QString& name) {
  return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
         !name.contains(QLatin1Char('/')) && !name.contains(QChar::Null);
}

QString AllFiles() { return QStringLiteral("*"); }

// Files and links; none of what a link leads to.
QStringList FilesOf(const QString& directory, const QString& pattern) {
  if (QFileInfo(QDir::cleanPath(directory)).isSymLink()) return {};
  QStringList files;
  const auto entries = QDir(directory).entryInfoList(
      {pattern}, QDir::Files | QDir::Dirs | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  for (const QFileInfo& entry : entries) {
    if (entry.isSymLink() || entry.isFile()) files << entry.fileName();
  }
  return files;
}

bool IsReplaceable(const catalogue::Paths& paths, const QString& parent, const QString& name) {
  const QString webDir = parent + QLatin1Char('/') + name;
  return IsPlainName(name) && !QFileInfo(webDir).isSymLink() && !IsProgramsOwn(paths, webDir);
}

}  // namespace

QString WebImageDir(const QString& webDir) { return webDir + QStringLiteral("/Images"); }
QString WebThumbDir(const QString& webDir) { return webDir + QStringLiteral("/Thumbnails"); }

bool IsProgramsOwn(const catalogue::Paths& paths, const QString& webDir) {
  const QString written[] = {webDir, WebImageDir(webDir), WebThumbDir(webDir)};
  return std::any_of(std::begin(written), std::end(written),
                     [&](const QString& place) { return IsOwnDirectory(paths, place); });
}

void DeleteFiles(const QString& directory, const QString& pattern) {
  for (const QString& name : FilesOf(directory, pattern)) QFile::remove(directory + QLatin1Char('/') + name);
}

// An export has a first page, and its pictures are numbered from 1 on; a camera's names may be numbers too.
QStringList OtherFilesOfWeb(const catalogue::Paths& paths, const QString& parent, const QString& name) {
  const QString webDir = parent + QLatin1Char('/') + name;
  const std::pair<const char*, const char*> written[] = {{"", R"(Photo(?:Image|Data)_pg(\d+)\.htm)"},
                                                         {"Images/", R"((\d+)\.\w*)"},
                                                         {"Thumbnails/", R"((\d+)t\.bmp)"}};
  const bool goes = IsReplaceable(paths, parent, name);
  const bool isWeb = goes && !FilesOf(webDir, QStringLiteral("Photo*_pg1.htm")).isEmpty();
  QStringList others;
  for (const auto& [place, pattern] : written) {
    const QRegularExpression own(QRegularExpression::anchoredPattern(QLatin1String(pattern)));
    const QString directory = QLatin1String(place);
    const QStringList files = FilesOf(webDir + QLatin1Char('/') + directory, AllFiles());
    // An export has one file of each number.
    const auto sharesNumber = [&own](const QString& number) {
      return [&own, number](const QString& file) { return own.match(file).captured(1) == number; };
    };
    for (const QString& file : files) {
      const auto match = own.match(file);
      const bool isNumbered = match.hasMatch() && match.captured(1).toLongLong() <= files.size() &&
                              std::ranges::count_if(files, sharesNumber(match.captured(1))) == 1;
      // Where nothing is deleted, files of these names are written over.
      if (goes ? !(isWeb && isNumbered) : match.hasMatch()) others << directory + file;
    }
  }
  return others;
}

void DeleteWeb(const catalogue::Paths& paths, const QString& parent, const QString& name) {
  if (!IsReplaceable(paths, parent, name)) return;
  const QString webDir = parent + QLatin1Char('/') + name;
  // A link at Images or Thumbnails goes with the files.
  DeleteFiles(webDir, AllFiles());
  DeleteFiles(WebImageDir(webDir), AllFiles());
  DeleteFiles(WebThumbDir(webDir), AllFiles());
  QDir().rmdir(WebThumbDir(webDir));
}

void MakeWebDirectories(const QString& webDir, bool gallery) {
  QDir().mkdir(webDir);
  QDir().mkdir(WebImageDir(webDir));
  if (gallery) QDir().mkdir(WebThumbDir(webDir));
}

}  // namespace veldrin::output
