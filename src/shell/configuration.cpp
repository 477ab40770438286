#include "shell/configuration.h"

#include <QStandardPaths>

#include "base/failure.h"
#include "catalogue/schema.h"
#include "catalogue/staging.h"
#include "controls/msg_box.h"
#include "shell/ini_file.h"

namespace veldrin::shell {

namespace {

constexpr int IniBufferSize = 255;

bool Refuse(const QString& reason) {
  controls::MsgBox(nullptr, reason);
  return false;
}

}  // namespace

QString IniFileOf(const QString& programPath) { return programPath + QStringLiteral("/Ini/Veldrin.ini"); }

QString ReadIniString(const QString& section, const QString& key, const QString& file) {
  return GetPrivateProfileString(section, key, file, IniBufferSize);
}

void WriteIniString(const QString& section, const QString& key, const QString& value, const QString& file) {
  WritePrivateProfileString(section, key, value, file);
}

bool LoadConfiguration(catalogue::Paths& paths, engine::DBEngine& engine, const App& app) {
  paths.IniFile = IniFileOf(app.Path());
  QString database = ReadIniString(QStringLiteral("Directories"), QStringLiteral("Database"), paths.IniFile);
  if (database.isEmpty()) database = app.Path() + QStringLiteral("/Database");
  engine.SystemDB = database + QStringLiteral("/Veldrin.MDW");
  paths.DatabaseFile = database + QStringLiteral("/Photos.mdb");
  paths.ImageDir = database + QStringLiteral("/Images/");
  paths.ThumbDir = paths.ImageDir + QStringLiteral("Thumbnails/");
  paths.MusicDir = database + QStringLiteral("/Music/");
  paths.TempDir = app.TempDir() + QLatin1Char('/');
  // Not below TempDir, which may be in memory: pictures are large, and a message may be open for days.
  paths.MailDir = QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/Mail/");
  paths.BrowserPath = ReadIniString(QStringLiteral("Programs"), QStringLiteral("Webbrowser"), paths.IniFile);
  if (paths.BrowserPath.isEmpty()) paths.BrowserPath = DefaultBrowser();
  base::ResumeNext([&] { app.MakeTempDir(); });
  base::ResumeNext([&] { app.FillPath(); });
  if (!catalogue::CreateWorkFile(paths, engine, app.Path()))
    return Refuse(QStringLiteral("Unable to Connect to the Access Tables."));
  if (!catalogue::OpenCatalogue(paths, engine))
    return Refuse(QStringLiteral("Unable to Initialize User Tables."));
  catalogue::SweepStaging(paths, engine);
  return true;
}

}  // namespace veldrin::shell
