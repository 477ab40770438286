#include "shell/configuration.h"

#include "catalogue/schema.h"
#include "platform/failure.h"
#include "platform/ini_file.h"

namespace veldrin::shell {

namespace {

constexpr int IniBufferSize = 255;

}  // namespace

QString IniFileOf(const QString& programPath) { return programPath + QStringLiteral("/Ini/Veldrin.ini"); }

QString ReadIniString(const QString& section, const QString& key, const QString& file) {
  return platform::GetPrivateProfileString(section, key, file, IniBufferSize);
}

void WriteIniString(const QString& section, const QString& key, const QString& value, const QString& file) {
  platform::WritePrivateProfileString(section, key, value, file);
}

bool LoadConfiguration(catalogue::Paths& paths, platform::DBEngine& engine, const platform::App& app) {
  paths.IniFile = IniFileOf(app.Path());
  QString database = ReadIniString(QStringLiteral("Directories"), QStringLiteral("Database"), paths.IniFile);
  if (database.isEmpty()) database = app.Path() + QStringLiteral("/Database");
  engine.SystemDB = database + QStringLiteral("/Veldrin.MDW");
  paths.DatabaseFile = database + QStringLiteral("/Photos.mdb");
  paths.ImageDir = database + QStringLiteral("/Images/");
  paths.ThumbDir = paths.ImageDir + QStringLiteral("Thumbnails/");
  paths.MusicDir = database + QStringLiteral("/Music/");
  paths.TempDir = app.TempDir() + QLatin1Char('/');
  paths.BrowserPath = ReadIniString(QStringLiteral("Programs"), QStringLiteral("Webbrowser"), paths.IniFile);
  if (paths.BrowserPath.isEmpty()) paths.BrowserPath = DefaultBrowser();
  platform::ResumeNext([&] { app.MakeTempDir(); });
  platform::ResumeNext([&] { app.FillPath(); });
  return catalogue::CreateWorkFile(paths, engine, app.Path()) && catalogue::OpenCatalogue(paths, engine);
}

}  // namespace veldrin::shell
