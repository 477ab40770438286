#include "journeys/other_machine.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include "support/test_support.h"

namespace veldrin::test {

namespace {

constexpr int Levels = 10;

QString Quoted(QString text) { return u'\'' + text.replace(u'\'', "''") + u'\''; }

QString LevelTableOf(const QString& key) { return QStringLiteral("tblLevel%1").arg(key.size() / 4); }

QString StateOf(const QString& path) {
  struct stat state {};
  ::stat(QFile::encodeName(path).constData(), &state);
  return QStringLiteral("%1 %2 %3 %4")
      .arg(state.st_ino)
      .arg(state.st_size)
      .arg(state.st_mtim.tv_sec)
      .arg(state.st_mtim.tv_nsec);
}

}  // namespace

OtherMachine::OtherMachine(const QString& databaseFile, QString imageDir)
    : File(databaseFile.toStdString(), SQLite::OPEN_READWRITE), ImageDir(std::move(imageDir)) {
  File.exec("PRAGMA synchronous = OFF");
}

std::vector<QStringList> OtherMachine::Read(const QString& sql) {
  std::vector<QStringList> rows;
  SQLite::Statement query(File, sql.toStdString());
  while (query.executeStep()) {
    QStringList& row = rows.emplace_back();
    for (int i = 0; i < query.getColumnCount(); ++i) row << QString::fromUtf8(query.getColumn(i).getText());
  }
  return rows;
}

const Stored& OtherMachine::Look() {
  // Counts what others write; what is written here is read anew in any case.
  const QString version = Read("PRAGMA data_version").front().front();
  if (version != LastVersion) ReadTables();
  LastVersion = version;
  ReadImages();
  return Last;
}

void OtherMachine::ReadTables() {
  Last.Rows.clear();
  Last.Links.clear();
  Last.Folders.clear();
  for (QStringList row : Read("SELECT PhotoID, ImageType, Title, Description, MadeBy FROM tblPhotos"))
    Last.Rows[row.takeFirst().toInt()] = row;
  for (QStringList& row : Read("SELECT IDNo, PhotoID FROM tblPhotoLinks")) {
    while (row[0].endsWith("0000")) row[0].chop(4);  // What fills it up.
    Last.Links.emplace(row[0], row[1].toInt());
  }
  for (int level = 1; level <= Levels; ++level)
    for (const QStringList& row : Read(QStringLiteral("SELECT IDNo, FolderName FROM tblLevel%1").arg(level)))
      Last.Folders[row[0]] = row[1];
}

void OtherMachine::ReadImages() {
  std::map<QString, QString> states;
  for (const QString& name : QDir(ImageDir).entryList(QDir::Files, QDir::Unsorted))
    states[name] = StateOf(ImageDir + name);
  std::erase_if(Last.Images, [&](const auto& image) { return !states.contains(image.first); });
  ForEachBeyond(states, LastStates,
                [this](const auto& file) { Last.Images[file.first] = ReadFile(ImageDir + file.first); });
  LastStates = std::move(states);
}

void OtherMachine::Write(const JourneyModel& model) {
  const Stored there = Look();
  const Stored wanted = model.AsStored();
  QStringList sql{"BEGIN IMMEDIATE"};
  const auto linkKey = [](const QString& place) { return place.leftJustified(40, u'0'); };
  ForEachBeyond(there.Rows, wanted.Rows, [&](const auto& row) {
    sql << QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = %1").arg(row.first);
  });
  ForEachBeyond(wanted.Rows, there.Rows, [&](const auto& row) {
    const auto& [number, texts] = row;
    sql << QStringLiteral(
               "INSERT INTO tblPhotos (PhotoID, ImageType, Title, Description, MadeBy, CreateDate) "
               "VALUES (%1, %2, %3, nullif(%4, ''), nullif(%5, ''), datetime('2001-01-01', '+%6 minutes'))")
               .arg(number)
               .arg(Quoted(texts[0]), Quoted(texts[1]), Quoted(texts[2]), Quoted(texts[3]))
               .arg(model.Rows.at(number).Birth);
  });
  ForEachBeyond(there.Links, wanted.Links, [&](const Link& link) {
    sql << QStringLiteral("DELETE FROM tblPhotoLinks WHERE IDNo = '%1' AND PhotoID = %2")
               .arg(linkKey(link.first))
               .arg(link.second);
  });
  ForEachBeyond(wanted.Links, there.Links, [&](const Link& link) {
    sql << QStringLiteral("INSERT INTO tblPhotoLinks VALUES ('%1', %2)")
               .arg(linkKey(link.first))
               .arg(link.second);
  });
  ForEachBeyond(there.Folders, wanted.Folders, [&](const auto& folder) {
    sql << QStringLiteral("DELETE FROM %1 WHERE IDNo = '%2'").arg(LevelTableOf(folder.first), folder.first);
  });
  ForEachBeyond(wanted.Folders, there.Folders, [&](const auto& folder) {
    const auto& [key, name] = folder;
    sql << QStringLiteral("INSERT INTO %1 VALUES ('%2', %3)").arg(LevelTableOf(key), key, Quoted(name));
  });
  File.exec(sql.join(u';').toStdString() + ";COMMIT");
  LastVersion.clear();
  ForEachBeyond(there.Images, wanted.Images, [&](const auto& file) { QFile::remove(ImageDir + file.first); });
  ForEachBeyond(wanted.Images, there.Images,
                [&](const auto& file) { WriteFile(ImageDir + file.first, file.second); });
}

}  // namespace veldrin::test
