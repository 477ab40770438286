#include "catalogue/schema.h"

#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <utility>

#include "base/runtime_error.h"
#include "desktop/file_copy.h"
#include "desktop/own_directory.h"
#include "desktop/shared_locks.h"

namespace veldrin::catalogue {

namespace {

using base::RuntimeError;
using engine::Field;
using engine::Index;
using engine::TableDef;

QString TemplateName() { return QStringLiteral("TmpPhotos.mdb"); }

// Whole or not at all; a file that is there is replaced, whatever its permissions.
void CopyOver(const QString& source, const QString& target) {
  const QString part = target + QStringLiteral(".part");
  QFile::remove(part);
  const desktop::FileCopy copy(source, part);
  // A copy that a crash left behind may have left the log of a change that was under way: it is not of this
  // file.
  for (const QString& file : engine::FilesBeside(target)) QFile::remove(file);
  if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(target).constData()) != 0) {
    QFile::remove(part);
    throw RuntimeError(base::errPathFileAccess, QStringLiteral("Path/File access error: %1").arg(target));
  }
}

QVector<Field> PhotoFields() {
  return {
      {QStringLiteral("PhotoID"), engine::dbLong},       {QStringLiteral("ImageType"), engine::dbText, 3},
      {QStringLiteral("Title"), engine::dbText, 60},     {QStringLiteral("CreateDate"), engine::dbDate},
      {QStringLiteral("MadeBy"), engine::dbText, 26},    {QStringLiteral("Description"), engine::dbText, 255},
      {QStringLiteral("LastModifyDate"), engine::dbDate}};
}

TableDef LinkedTable(const QString& name, const QString& file, bool readOnly, QVector<Field> fields) {
  TableDef table;
  table.Fields = std::move(fields);
  table.Name = name;
  table.Connect = QStringLiteral(";DATABASE=") + file;
  table.SourceTableName = name;
  table.ReadOnly = readOnly;
  return table;
}

QVector<Index> PrimaryKey(const QStringList& fields) {
  return {{QStringLiteral("PrimaryKey"), fields, true, true}};
}

void AppendLinks(engine::Database& db, const QString& file, bool readOnly) {
  const Field idNo{QStringLiteral("IDNo"), engine::dbText, 40};
  db.Append(LinkedTable(QStringLiteral("tblPhotos"), file, readOnly, PhotoFields()));
  db.Append(LinkedTable(QStringLiteral("tblPhotoLinks"), file, readOnly,
                        {idNo, {QStringLiteral("PhotoID"), engine::dbLong}}));
  for (int level = 1; level <= LevelCount; ++level)
    db.Append(LinkedTable(LevelTable(level), file, readOnly,
                          {idNo, {QStringLiteral("FolderName"), engine::dbText, 255}}));
}

void AppendWorkingTables(engine::Database& db) {
  const Field idNo{QStringLiteral("IDNo"), engine::dbText, 40};
  const Field photoId{QStringLiteral("PhotoID"), engine::dbLong};
  const Field imageType{QStringLiteral("ImageType"), engine::dbText, 3};
  const Field lastModifyDate{QStringLiteral("LastModifyDate"), engine::dbDate};

  TableDef actFolder;
  actFolder.Name = QStringLiteral("ActFolder");
  actFolder.Fields = {idNo, {QStringLiteral("Length"), engine::dbInteger}};
  db.Append(actFolder);

  TableDef actPhotoLinks;
  actPhotoLinks.Name = QStringLiteral("ActPhotoLinks");
  actPhotoLinks.Fields = {idNo, photoId};
  actPhotoLinks.Indexes = PrimaryKey({idNo.Name, photoId.Name});
  db.Append(actPhotoLinks);

  // Nothing reads or writes this table: it belongs to the fixed shape of the working copy.
  TableDef photos;
  photos.Name = QStringLiteral("Photos");
  photos.Fields = PhotoFields();
  photos.Indexes = PrimaryKey({photoId.Name});
  db.Append(photos);

  TableDef checkPhotos;
  checkPhotos.Name = QStringLiteral("CheckPhotos");
  checkPhotos.Fields = {photoId, imageType, lastModifyDate};
  checkPhotos.Indexes = PrimaryKey({photoId.Name});
  db.Append(checkPhotos);
}

// The photos with a link whose key begins with the prefix in ActFolder, each once.
engine::QueryDef QryPhotos() {
  return {QStringLiteral("qryPhotos"),
          QStringLiteral("tblPhotos"),
          QStringLiteral("PhotoID"),
          QStringLiteral("tblPhotoLinks"),
          QStringLiteral("ActFolder"),
          QStringLiteral("LEFT(tblPhotoLinks.IDNo, ActFolder.Length) = ActFolder.IDNo")};
}

void FillWorkFile(const Paths& paths, engine::DBEngine& engine, bool readOnly) {
  // Closed at the end, also by an error.
  const auto db = engine.OpenDatabase(paths.WorkFile);
  AppendLinks(*db, paths.DatabaseFile, readOnly);
  AppendWorkingTables(*db);
  db->CreateQueryDef(QryPhotos());
  db->Execute(QStringLiteral("INSERT INTO ActFolder (IDNo, Length) VALUES('Default', 0)"));
}

}  // namespace

QString LevelTable(int level) { return QStringLiteral("tblLevel%1").arg(level); }

bool CreateWorkFile(Paths& paths, engine::DBEngine& engine, const QString& programPath, QString* why) {
  paths.WorkFile = TemplateName();
  engine.DefaultType = engine::dbUseJet;
  engine.DefaultUser = QStringLiteral("Veldrin");
  engine.DefaultPassword = QStringLiteral("qzmvrtkle");
  try {
    desktop::RequireOwnDirectory(paths.TempDir);
    engine.Forget();
    CopyOver(programPath + QStringLiteral("/Database/") + TemplateName(), paths.TempDir + TemplateName());
  } catch (const RuntimeError& error) {
    if (why != nullptr) *why = error.Description();
    return false;
  }
  paths.WorkFile = paths.TempDir + TemplateName();
  return true;
}

bool OpenCatalogue(const Paths& paths, engine::DBEngine& engine, QString* why) {
  const QString lie = desktop::WhyLocksFail(paths.DatabaseFile);
  if (why != nullptr) *why = lie;
  try {
    FillWorkFile(paths, engine, !lie.isEmpty());
  } catch (const RuntimeError& error) {
    if (why != nullptr) *why = error.Description();
    return false;
  }
  return true;
}

void DeleteWorkFile(const Paths& paths) {
  // The bare name that stands there without a copy would be any file of that name in the current directory.
  if (QFileInfo(paths.WorkFile).isAbsolute()) QFile::remove(paths.WorkFile);
}

}  // namespace veldrin::catalogue
