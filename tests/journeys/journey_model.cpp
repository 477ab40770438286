#include "journeys/journey_model.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include "support/test_support.h"

namespace veldrin::test {

namespace {

constexpr int Levels = 10;

QString Quoted(QString text) { return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\''; }

QString LevelTableOf(const QString& key) { return QStringLiteral("tblLevel%1").arg(key.size() / 4); }

// Without the zeros that fill it up.
QString PlaceOfLink(QString key) {
  while (key.endsWith(QLatin1String("0000"))) key.chop(4);
  return key;
}

QString Text(const CatalogueModel::Link& link) {
  return QStringLiteral("link %1|%2").arg(link.first).arg(link.second);
}
QString Text(const std::pair<const int, QStringList>& row) {
  return QStringLiteral("row %1: %2").arg(row.first).arg(row.second.join(u'|'));
}
QString Text(const std::pair<const QString, QString>& folder) {
  return QStringLiteral("folder %1 %2").arg(folder.first, folder.second);
}
QString Text(const std::pair<const QString, QByteArray>& file) {
  return QStringLiteral("image %1 of %2 bytes").arg(file.first).arg(file.second.size());
}

template <class Things>
QString Difference(const Things& there, const Things& expected) {
  QStringList lines;
  for (const auto& thing : there)
    if (std::find(expected.begin(), expected.end(), thing) == expected.end())
      lines << QStringLiteral("not expected: ") + Text(thing);
  for (const auto& thing : expected)
    if (std::find(there.begin(), there.end(), thing) == there.end())
      lines << QStringLiteral("missing: ") + Text(thing);
  return lines.mid(0, 6).join(u'\n');
}

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

QString Stored::DifferenceTo(const Stored& expected) const {
  QStringList parts{Difference(Rows, expected.Rows), Difference(Links, expected.Links),
                    Difference(Folders, expected.Folders), Difference(Images, expected.Images)};
  parts.removeAll(QString());
  return parts.join(u'\n');
}

QString Stored::DeadEnd() const {
  for (const auto& link : Links) {
    if (!Rows.contains(link.second)) return Text(link) + QStringLiteral(" without a photo");
    if (!link.first.isEmpty() && !Folders.contains(link.first))
      return Text(link) + QStringLiteral(" without a folder");
  }
  for (const auto& [key, name] : Folders) {
    const QString parent = key.chopped(4);
    if (!parent.isEmpty() && !Folders.contains(parent))
      return QStringLiteral("folder %1 without its parent").arg(key);
  }
  return {};
}

std::vector<int> JourneyModel::List() const {
  std::vector<int> list;
  for (const int number : Shows(Selected)) {
    const Photo& photo = Rows.at(number);
    const bool fits = photo.Title.contains(QueryTitle, Qt::CaseInsensitive) &&
                      (QueryType.isEmpty() || photo.ImageType == QueryType);
    if (fits) list.push_back(number);
  }
  return list;
}

void JourneyModel::Store(int number, Photo photo, const QString& folder) {
  Rows[number] = std::move(photo);
  Photos.insert(number);
  Links.emplace(PlaceOf(folder), number);
}

void JourneyModel::Delete(int number) {
  DeletePhoto(number);
  Rows.erase(number);
  std::erase_if(Staged, [&](const Link& link) { return link.second == number; });
}

void JourneyModel::RemoveFolderElsewhere(const QString& folder) {
  JourneyModel there = *this;
  there.RemoveFolder(folder);
  Folders = there.Folders;
  Links = there.Links;
}

void JourneyModel::ReplaceFolder(const QString& folder, const QString& name) {
  RemoveFolderElsewhere(folder);
  Folders[folder] = name;
  Replaced.insert(folder);
}

void JourneyModel::Adopt(const Stored& stored) {
  Folders = {{QString(), QStringLiteral("Photos")}};
  for (const auto& [key, name] : stored.Folders)
    if (!IsUnorganized(key)) Folders[key] = name;
  Links = stored.Links;
}

Stored JourneyModel::AsStored() const {
  Stored stored;
  for (const auto& [number, photo] : Rows) {
    stored.Rows[number] = {photo.ImageType, photo.Title, photo.Description, photo.MadeBy};
    if (!photo.Image.isNull())
      stored.Images[QStringLiteral("%1.%2").arg(number).arg(photo.ImageType)] = photo.Image;
  }
  stored.Links = Links;
  for (const auto& [key, name] : Folders) {
    if (!key.isEmpty()) stored.Folders[key] = name;
    if (HasChildren(key)) stored.Folders[key + QStringLiteral("0000")] = QStringLiteral("!UNORGANIZED");
  }
  return stored;
}

OtherMachine::OtherMachine(const QString& databaseFile, QString imageDir) : ImageDir(std::move(imageDir)) {
  EXPECT_EQ(sqlite3_open(QFile::encodeName(databaseFile).constData(), &File), SQLITE_OK);
  Execute(QStringLiteral("PRAGMA synchronous = OFF"));
}

OtherMachine::~OtherMachine() { sqlite3_close(File); }

void OtherMachine::Execute(const QString& sql) {
  EXPECT_EQ(sqlite3_exec(File, sql.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sql.toStdString() << ": " << sqlite3_errmsg(File);
}

std::vector<QStringList> OtherMachine::Read(const QString& sql) {
  std::vector<QStringList> rows;
  const auto add = [](void* into, int count, char** values, char**) {
    QStringList row;
    for (int i = 0; i < count; ++i) row << QString::fromUtf8(values[i]);
    static_cast<std::vector<QStringList>*>(into)->push_back(row);
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(File, sql.toUtf8().constData(), add, &rows, nullptr), SQLITE_OK)
      << sqlite3_errmsg(File);
  return rows;
}

const Stored& OtherMachine::Look() {
  // Counts what others write; what is written here is read anew in any case.
  const QString version = Read(QStringLiteral("PRAGMA data_version")).front().front();
  if (version != LastVersion) ReadTables();
  LastVersion = version;
  ReadImages();
  return Last;
}

void OtherMachine::ReadTables() {
  Last.Rows.clear();
  Last.Links.clear();
  Last.Folders.clear();
  for (QStringList row : Read(QStringLiteral("SELECT PhotoID, ifnull(ImageType, ''), ifnull(Title, ''), "
                                             "ifnull(Description, ''), ifnull(MadeBy, '') FROM tblPhotos")))
    Last.Rows[row.takeFirst().toInt()] = row;
  for (const QStringList& row : Read(QStringLiteral("SELECT IDNo, PhotoID FROM tblPhotoLinks")))
    Last.Links.emplace(PlaceOfLink(row[0]), row[1].toInt());
  for (int level = 1; level <= Levels; ++level)
    for (const QStringList& row : Read(QStringLiteral("SELECT IDNo, FolderName FROM tblLevel%1").arg(level)))
      Last.Folders[row[0]] = row[1];
}

void OtherMachine::ReadImages() {
  std::map<QString, QString> states;
  for (const QString& name : QDir(ImageDir).entryList(QDir::Files, QDir::Unsorted))
    states[name] = StateOf(ImageDir + name);
  std::erase_if(Last.Images, [&](const auto& image) { return !states.contains(image.first); });
  for (const auto& [name, state] : states) {
    const auto known = LastStates.find(name);
    if (known == LastStates.end() || known->second != state) Last.Images[name] = ReadFile(ImageDir + name);
  }
  LastStates = std::move(states);
}

void OtherMachine::Write(const JourneyModel& model) {
  const Stored there = Look();
  const Stored wanted = model.AsStored();
  QStringList sql{QStringLiteral("BEGIN IMMEDIATE")};
  const auto linkKey = [](const QString& place) { return place.leftJustified(40, u'0'); };
  for (const auto& row : there.Rows)
    if (!wanted.Rows.contains(row.first) || wanted.Rows.at(row.first) != row.second)
      sql << QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = %1").arg(row.first);
  for (const auto& [number, texts] : wanted.Rows)
    if (!there.Rows.contains(number) || there.Rows.at(number) != texts)
      sql << QStringLiteral(
                 "INSERT INTO tblPhotos (PhotoID, ImageType, Title, Description, MadeBy, CreateDate) "
                 "VALUES (%1, %2, %3, nullif(%4, ''), nullif(%5, ''), datetime('2001-01-01', '+%6 minutes'))")
                 .arg(number)
                 .arg(Quoted(texts[0]), Quoted(texts[1]), Quoted(texts[2]), Quoted(texts[3]))
                 .arg(model.Rows.at(number).Birth);
  for (const auto& [place, number] : there.Links)
    if (!wanted.Links.contains({place, number}))
      sql << QStringLiteral("DELETE FROM tblPhotoLinks WHERE IDNo = '%1' AND PhotoID = %2")
                 .arg(linkKey(place))
                 .arg(number);
  for (const auto& [place, number] : wanted.Links)
    if (!there.Links.contains({place, number}))
      sql << QStringLiteral("INSERT INTO tblPhotoLinks VALUES ('%1', %2)").arg(linkKey(place)).arg(number);
  for (const auto& [key, name] : there.Folders)
    if (!wanted.Folders.contains(key))
      sql << QStringLiteral("DELETE FROM %1 WHERE IDNo = '%2'").arg(LevelTableOf(key), key);
  for (const auto& [key, name] : wanted.Folders)
    sql << QStringLiteral("INSERT OR REPLACE INTO %1 VALUES ('%2', %3)")
               .arg(LevelTableOf(key), key, Quoted(name));
  sql << QStringLiteral("COMMIT");
  Execute(sql.join(u';'));
  LastVersion.clear();
  for (const auto& [name, bytes] : there.Images)
    if (!wanted.Images.contains(name)) QFile::remove(ImageDir + name);
  for (const auto& [name, bytes] : wanted.Images)
    if (!there.Images.contains(name) || there.Images.at(name) != bytes) WriteFile(ImageDir + name, bytes);
}

}  // namespace veldrin::test
