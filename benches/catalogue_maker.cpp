#include "benches/catalogue_maker.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>

#include "benches/figure.h"
#include "benches/sqlite_file.h"
#include "catalogue/schema.h"

namespace veldrin::benches {

namespace {

// Photos come in runs: those of one day go into one folder.
constexpr int RunLength = 50;

std::string Segment(int number) {
  const std::string digits = std::to_string(number);
  return std::string(4 - digits.size(), '0') + digits;
}

std::string LinkKey(const std::string& folderKey) {
  return folderKey + std::string(40 - folderKey.size(), '0');
}

void InsertFolder(SqliteFile& file, const std::string& key, const std::string& name) {
  file.Run("INSERT INTO tblLevel" + std::to_string(key.size() / 4) + " VALUES('" + key + "', '" + name +
           "')");
}

// Makes the folders and returns the keys of the leaves below the top folder.
std::vector<std::string> InsertFolders(SqliteFile& file, int count) {
  std::vector<std::string> leaves;
  if (count == 0) return leaves;
  const int width = std::max(1, static_cast<int>(std::sqrt(count)) - 1);
  const std::string top = TopFolderKey;
  InsertFolder(file, "0000", "!UNORGANIZED");
  InsertFolder(file, top, "Everything");
  InsertFolder(file, top + "0000", "!UNORGANIZED");
  int made = 1;
  for (int year = 1; year <= width && made < count; ++year) {
    const std::string key = top + Segment(year);
    InsertFolder(file, key, "Year " + std::to_string(year));
    ++made;
    if (made < count) InsertFolder(file, key + "0000", "!UNORGANIZED");
    for (int day = 1; day <= width && made < count; ++day, ++made) {
      leaves.push_back(key + Segment(day));
      InsertFolder(file, leaves.back(), "Day " + std::to_string(day));
    }
  }
  for (int other = 2; made < count; ++other, ++made)
    InsertFolder(file, Segment(other), "Empty " + std::to_string(other));
  return leaves;
}

struct Link {
  std::string Key;
  int PhotoID;
  auto operator<=>(const Link&) const = default;
};

std::vector<Link> PlacePhotos(const std::vector<std::string>& leaves, int photos) {
  std::mt19937 chance(1);
  const auto leaf = [&] { return 1 + chance() % (leaves.size() - 1); };
  std::vector<Link> links;
  // The runs of the full folder lie apart from each other, as those of other folders do.
  const int fullRuns = PhotosInFolder / RunLength;
  const int apart = std::max(1, photos / RunLength / fullRuns);
  int full = 0;
  size_t place = 0;
  for (int id = 1; id <= photos; ++id) {
    const int run = (id - 1) / RunLength;
    if ((id - 1) % RunLength == 0) place = run % apart == 0 && full < fullRuns ? (++full, 0) : leaf();
    links.push_back({LinkKey(leaves[place]), id});
    if (place == 0 || id % 10 != 0) continue;
    const size_t second = leaf();
    if (second != place) links.push_back({LinkKey(leaves[second]), id});
  }
  // In the order of the table's key; anything else would move its pages about.
  std::sort(links.begin(), links.end());
  return links;
}

void InsertPhotos(SqliteFile& file, int photos) {
  auto insert = file.Prepare(
      "INSERT INTO tblPhotos VALUES(?1, 'jpg', 'Photograph number ' || ?1, ?2, 'Maker ' || (?1 % 40), "
      "CASE WHEN ?1 % 3 = 0 THEN 'What one sees on the photograph number ' || ?1 || ', told in a sentence or "
      "two.' END, ?2)");
  const QDateTime first(QDate(1990, 1, 1), QTime(8, 0), Qt::UTC);
  for (int id = 1; id <= photos; ++id) {
    insert.Bind(1, id);
    insert.Bind(2, first.addSecs(id * 900LL).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString());
    insert.Run();
  }
}

void Fill(const QString& program, CatalogueSize size) {
  SqliteFile file(program + QStringLiteral("/Database/Photos.mdb"));
  file.Run("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -800000; BEGIN");
  const auto leaves = InsertFolders(file, size.Folders);
  InsertPhotos(file, size.Photos);
  if (size.Photos > 0) {
    auto insert = file.Prepare("INSERT INTO tblPhotoLinks VALUES(?1, ?2)");
    for (const Link& link : PlacePhotos(leaves, size.Photos)) {
      insert.Bind(1, link.Key);
      insert.Bind(2, link.PhotoID);
      insert.Run();
    }
  }
  file.Run("COMMIT; PRAGMA journal_mode = DELETE");
}

// Changes when the tables of the ready-made file do.
QString SchemaMark() {
  SqliteFile file(QStringLiteral(READY_MADE_DIR "/Photos.mdb"));
  auto tables = file.Prepare("SELECT group_concat(sql) FROM (SELECT sql FROM sqlite_schema ORDER BY name)");
  tables.Step();
  return QString::fromLatin1(
      QCryptographicHash::hash(QByteArray::fromStdString(tables.Text(0)), QCryptographicHash::Sha1)
          .toHex()
          .left(8));
}

}  // namespace

void MakeEmptyCatalogue(const QString& program) {
  QDir(program).removeRecursively();
  const QString database = program + QStringLiteral("/Database");
  for (const char* directory : {"/Images/Thumbnails", "/Music"})
    QDir().mkpath(database + QLatin1String(directory));
  for (const char* name : {"/Photos.mdb", "/TmpPhotos.mdb", "/Veldrin.MDW"}) {
    const QString target = database + QLatin1String(name);
    if (!QFile::copy(QStringLiteral(READY_MADE_DIR) + QLatin1String(name), target)) {
      throw std::runtime_error("can't make " + target.toStdString());
    }
  }
}

QString MakeCatalogue(const QString& data, CatalogueSize size) {
  const QString program =
      QStringLiteral("%1/catalogue-%2-%3-%4").arg(data).arg(size.Photos).arg(size.Folders).arg(SchemaMark());
  if (QFile::exists(program)) return program;
  const QString part = program + QStringLiteral(".part");
  MakeEmptyCatalogue(part);
  Fill(part, size);
  QDir().rename(part, program);
  return program;
}

QString MakePictureCatalogue(const QString& program, const std::vector<std::string>& pictures) {
  MakeEmptyCatalogue(program);
  int id = 0;
  for (const std::string& picture : pictures) {
    const std::filesystem::path target = program.toStdString() + "/Database/Images/" + std::to_string(++id) +
                                         std::filesystem::path(picture).extension().string();
    std::error_code refused;
    std::filesystem::create_hard_link(picture, target, refused);
    if (refused) std::filesystem::copy_file(picture, target);
  }
  SqliteFile file(program + QStringLiteral("/Database/Photos.mdb"));
  file.Run("BEGIN");
  InsertPhotos(file, id);
  for (int photo = 1; photo <= id; ++photo) {
    file.Run("INSERT INTO tblPhotoLinks VALUES('" + LinkKey("") + "', " + std::to_string(photo) + ")");
  }
  file.Run("COMMIT");
  return program;
}

QString CopyCatalogue(const QString& program, const QString& copy) {
  std::filesystem::remove_all(copy.toStdString());
  std::filesystem::copy(program.toStdString(), copy.toStdString(), std::filesystem::copy_options::recursive);
  RunShell("sync");
  return copy;
}

OpenedCatalogue::OpenedCatalogue(const QString& program) {
  const QString database = program + QStringLiteral("/Database/");
  ThePaths.DatabaseFile = database + QStringLiteral("Photos.mdb");
  ThePaths.ImageDir = database + QStringLiteral("Images/");
  ThePaths.ThumbDir = ThePaths.ImageDir + QStringLiteral("Thumbnails/");
  ThePaths.MusicDir = database + QStringLiteral("Music/");
  ThePaths.TempDir = Temp.path() + QLatin1Char('/');
  TheEngine.SystemDB = database + QStringLiteral("Veldrin.MDW");
  if (!catalogue::CreateWorkFile(ThePaths, TheEngine, program) ||
      !catalogue::OpenCatalogue(ThePaths, TheEngine)) {
    throw std::runtime_error("can't open " + program.toStdString());
  }
}

struct KeyReader::Connection {
  explicit Connection(const QString& path) : File(path) {}
  SqliteFile File;
};

KeyReader::KeyReader(const QString& program)
    : TheConnection(std::make_unique<Connection>(program + QStringLiteral("/Database/Photos.mdb"))) {}

KeyReader::~KeyReader() = default;

std::vector<int> KeyReader::ReadKeys(const std::string& folderKey) {
  std::vector<int> keys;
  if (folderKey.empty()) {
    auto all = TheConnection->File.Prepare("SELECT PhotoID FROM tblPhotos");
    while (all.Step()) keys.push_back(all.Integer(0));
    return keys;
  }
  auto range =
      TheConnection->File.Prepare("SELECT PhotoID FROM tblPhotoLinks WHERE IDNo >= ?1 AND IDNo < ?2");
  range.Bind(1, folderKey);
  range.Bind(2, folderKey + ":");  // The colon is the character behind the digits.
  while (range.Step()) keys.push_back(range.Integer(0));
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

int KeyReader::ReadFolders() {
  int count = 0;
  for (int level = 1; level <= catalogue::LevelCount; ++level) {
    auto folders =
        TheConnection->File.Prepare("SELECT IDNo, FolderName FROM tblLevel" + std::to_string(level));
    while (folders.Step()) count += folders.Text(1).empty() ? 0 : 1;
  }
  return count;
}

}  // namespace veldrin::benches
