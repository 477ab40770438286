#include "shell/configuration.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include "base/failure.h"
#include "catalogue/schema.h"
#include "catalogue/staging.h"
#include "controls/msg_box.h"
#include "shell/ini_file.h"
#include "shell/setup.h"

namespace veldrin::shell {

namespace {

constexpr int IniBufferSize = 255;

// What may be wrong is the directory of the catalogue, which is set in one place.
bool Refuse(const QString& message, const QString& why, const QString& iniFile) {
  QMessageBox box(QMessageBox::NoIcon, QGuiApplication::applicationDisplayName(),
                  message + QStringLiteral("\n\n") + why, QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  const QPushButton* setup = box.addButton(QStringLiteral("Program &Setup..."), QMessageBox::ActionRole);
  box.exec();
  if (box.clickedButton() == setup) frmSetup(iniFile).exec();
  return false;
}

void TellReadOnly(const QString& reason) {
  controls::MsgBox(nullptr, QStringLiteral("The catalogue is opened for reading alone. ") + reason,
                   controls::vbExclamation);
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
  QString why;
  if (!catalogue::CreateWorkFile(paths, engine, app.Path(), &why))
    return Refuse(QStringLiteral("Unable to Connect to the Access Tables."), why, paths.IniFile);
  if (!catalogue::OpenCatalogue(paths, engine, &why))
    return Refuse(QStringLiteral("Unable to Initialize User Tables."), why, paths.IniFile);
  if (!why.isEmpty()) {
    TellReadOnly(
        QStringLiteral("Its locks don't hold: another machine could write to it at the same time and "
                       "damage it.\r\r%1\r%2")
            .arg(paths.DatabaseFile, why));
  } else if (!QFileInfo(paths.DatabaseFile).isWritable() || !QFileInfo(database).isWritable()) {
    TellReadOnly(QStringLiteral("You may not write there.\r\r%1").arg(paths.DatabaseFile));
  } else {
    catalogue::SweepStaging(paths, engine);
  }
  return true;
}

}  // namespace veldrin::shell
