// Each command that writes, with a fault put into it: killed at one of its writes, or one of them failing.
// VELDRIN_FAULTS=all goes through all of them, one by one; without it some are taken at random.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <cerrno>
#include <iostream>

#include "support/environment.h"
#include "support/test_support.h"

namespace veldrin {
namespace {

constexpr int Photos = 6;

// Of the new pictures, which are known by the days of their dates, the last is none.
constexpr int Sources = 4;
QByteArray SourceOf(int day) { return day < Sources ? test::Jpeg(day) : QByteArray("no picture"); }

// What stands in the catalogue's tables and in the directories of pictures.
struct State {
  std::map<QString, QStringList> Tables;
  std::map<QString, QByteArray> Files;  ///< but for thumbnails, by name
  bool operator==(const State&) const = default;
};

// What one of them has and the other hasn't, for a message.
std::string Difference(const State& state, const State& expected) {
  QStringList lines;
  for (const auto& [table, rows] : expected.Tables) {
    for (const QString& row : rows) {
      if (!state.Tables.at(table).contains(row)) lines << "no " + table + u' ' + row;
    }
    for (const QString& row : state.Tables.at(table)) {
      if (!rows.contains(row)) lines << table + u' ' + row;
    }
  }
  for (const auto& [name, bytes] : expected.Files) {
    if (!state.Files.contains(name)) lines << "no " + name;
  }
  for (const auto& [name, bytes] : state.Files) {
    if (!expected.Files.contains(name) || expected.Files.at(name) != bytes) lines << name;
  }
  return lines.join(u'\n').toStdString();
}

QStringList RowsOf(SQLite::Database& db, const QString& table) {
  QStringList rows;
  SQLite::Statement all(db, "SELECT * FROM " + table.toStdString() + " ORDER BY 1, 2");
  while (all.executeStep()) {
    QStringList row;
    for (int i = 0; i < all.getColumnCount(); ++i)
      row << QString::fromStdString(all.getColumn(i).getString());
    rows << row.join(u'|');
  }
  return rows;
}

/// A program's directory: a catalogue with folders and photos, new pictures, places for copies and webs.
class World {
 public:
  /// A copy, with the files' times.
  explicit World(const QString& prototype) { QProcess::execute("cp", {"-a", prototype + "/.", Path()}); }

  QString Path() const { return Directory.path(); }

  State Look() const {
    State state;
    SQLite::Database db(Path().toStdString() + "/Database/Photos.mdb", SQLite::OPEN_READWRITE);
    EXPECT_EQ(db.execAndGet("PRAGMA integrity_check").getString(), "ok");
    state.Tables["tblPhotos"] = RowsOf(db, "tblPhotos");
    state.Tables["tblPhotoLinks"] = RowsOf(db, "tblPhotoLinks");
    for (int level = 1; level <= 3; ++level) {
      const QString table = QStringLiteral("tblLevel%1").arg(level);
      state.Tables[table] = RowsOf(db, table);
    }
    for (const char* place : {"/Database/Images", "/Sources", "/Got", "/Webs"}) {
      QDirIterator files(Path() + QLatin1String(place), QDir::Files | QDir::Hidden,
                         QDirIterator::Subdirectories);
      while (files.hasNext()) {
        const QString file = files.next();
        if (!file.contains("/Images/Thumbnails/"))
          state.Files[file.mid(Path().size())] = test::ReadFile(file);
      }
    }
    return state;
  }

 private:
  QTemporaryDir Directory;
};

struct Result {
  bool Killed = false;
  int Status = 0;
  bool Reached = false;
  QString Boxes;
};

Result RunCommand(const World& world, const char* command, int at, int error) {
  QProcess child;
  child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  child.start("env", {"LD_PRELOAD=" FAULT_POINT, QStringLiteral("FAULT_AT=%1").arg(at),
                      QStringLiteral("FAULT_ERROR=%1").arg(error), "ASAN_OPTIONS=verify_asan_link_order=0",
                      "HOME=" + world.Path(), FAULT_CHILD, command, world.Path()});
  EXPECT_TRUE(child.waitForFinished(60'000));
  const QString output = QString::fromUtf8(child.readAllStandardOutput());
  Result result{
      child.exitStatus() == QProcess::CrashExit, child.exitCode(), output.contains("reached|1"), {}};
  for (const QString& line : output.split(u'\n'))
    if (line.startsWith("box|")) result.Boxes += line.mid(4) + u' ';
  return result;
}

class Faults : public testing::TestWithParam<const char*> {
 protected:
  // Made once, since a catalogue takes longer than its copy.
  static void SetUpTestSuite() {
    test::UseMemoryDisk();
    Prototype = new test::TestCatalogue;
    const std::pair<const char*, const char*> folders[] = {{"0000", "!UNORGANIZED"},
                                                           {"0001", "Travels"},
                                                           {"00010000", "!UNORGANIZED"},
                                                           {"00010001", "Italy"},
                                                           {"0002", "Home"}};
    for (const auto& [key, name] : folders) Prototype->AddFolder(key, name);
    for (int id = 1; id <= Photos; ++id) {
      const char* const place = id % 3 == 0 ? "0002" : id % 3 == 1 ? "00010001" : "0001";
      Prototype->AddPhoto(id, QStringLiteral("photo"), {place}, id == 3 ? QSize() : QSize(20 + id, 30));
    }
    const QString program = Prototype->ProgramPath();
    for (const char* name : {"/Sources", "/Got", "/Webs"}) QDir().mkpath(program + QLatin1String(name));
    for (int day = 1; day <= Sources; ++day) {
      const QString name = QStringLiteral("%1/Sources/new%2.jpg").arg(program).arg(day);
      test::WriteFile(name, SourceOf(day));
      QFile file(name);
      ASSERT_TRUE(file.open(QIODevice::ReadWrite));
      file.setFileTime(QDateTime(QDate(2001, 1, day), QTime(12, 0)), QFileDevice::FileModificationTime);
    }
  }
  static void TearDownTestSuite() { delete Prototype; }

  QString PrototypePath() const { return Prototype->ProgramPath(); }

  // A row has the file that it had or is to have; no link leads nowhere, no photo is without a place, no
  // picture without a row; a file that is handed out is whole; and no picture has gone but with its row.
  void ExpectWhole(const State& state, const State& before, const State& after) const {
    QMap<QString, int> links;
    for (const QString& link : state.Tables.at("tblPhotoLinks")) ++links[link.section(u'|', 1)];
    QStringList images;
    for (const QString& row : state.Tables.at("tblPhotos")) {
      const QString number = row.section(u'|', 0, 0);
      const QString name = "/Database/Images/" + number + u'.' + row.section(u'|', 1, 1);
      EXPECT_GT(links.take(number), 0) << number.toStdString();
      images << name;
      const auto former = before.Files.find(name);
      const int day = row.contains("2001-01-") ? row.section("2001-01-", 1).left(2).toInt() : 0;
      const QByteArray picture = former != before.Files.end() ? former->second
                                 : day > 0 && day < Sources   ? SourceOf(day)
                                                              : QByteArray();
      const auto now = state.Files.find(name);
      EXPECT_EQ(now == state.Files.end() ? QByteArray() : now->second, picture) << name.toStdString();
    }
    EXPECT_TRUE(links.isEmpty()) << links.size();
    QSet<QByteArray> pictures;
    for (const auto& [name, bytes] : state.Files) {
      pictures.insert(bytes);
      const bool isWhole = after.Files.contains(name) && after.Files.at(name) == bytes;
      const bool isOurs =
          name.startsWith("/Database/Images/") ? images.contains(name) : isWhole || name.contains("/.");
      EXPECT_TRUE(isOurs || name.startsWith("/Sources/")) << name.toStdString();
    }
    for (const auto& [name, bytes] : before.Files) {
      const bool mayGo = name.startsWith("/Database/Images/") && !images.contains(name);
      EXPECT_TRUE(mayGo || pictures.contains(bytes)) << name.toStdString();
    }
  }

  static inline test::TestCatalogue* Prototype = nullptr;
};

TEST_P(Faults, LeaveTheCatalogueWholeAndAreTold) {
  const bool all = qEnvironmentVariable("VELDRIN_FAULTS") == "all";
  const int stride = all ? 1 : 13;
  const State before = World(PrototypePath()).Look();
  const World flawless(PrototypePath());
  ASSERT_EQ(RunCommand(flawless, GetParam(), 0, 0).Status, 0);
  const State after = flawless.Look();
  int tried = 0;
  for (const int error : {0, EIO, ENOSPC}) {
    bool reached = true;
    for (int at = all ? 1 : 1 + QRandomGenerator::global()->bounded(stride); reached; at += stride) {
      SCOPED_TRACE(std::string(GetParam()) + ": call " + std::to_string(at) + ", error " +
                   std::to_string(error));
      const World world(PrototypePath());
      const Result result = RunCommand(world, GetParam(), at, error);
      reached = result.Killed || result.Reached;
      tried += reached;
      EXPECT_TRUE(result.Killed ? error == 0 : result.Status == 0) << result.Status;
      // The next start brings to an end what was left.
      EXPECT_EQ(RunCommand(world, "none", 0, 0).Status, 0);
      const State state = world.Look();
      ExpectWhole(state, before, after);
      EXPECT_TRUE(result.Killed || state == after || !result.Boxes.isEmpty()) << "said nothing\n"
                                                                              << Difference(state, after);
      if (HasFailure()) {
        std::cout << result.Boxes.toStdString() << std::endl;
        return;
      }
    }
  }
  std::cout << GetParam() << ": " << tried << " faults" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Commands, Faults,
                         testing::Values("Add", "Delete", "Remove", "Paste", "FolderAdd", "FolderRename",
                                         "FolderDelete", "FolderPaste", "Save", "Thumbnails", "Get", "Web"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace veldrin
