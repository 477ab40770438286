// Pasting a thousand folders, deleting a folder with a hundred thousand photos in it.

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/sqlite_file.h"
#include "folders/folder_keys.h"
#include "shell/main_window.h"

namespace veldrin::benches {

namespace {

constexpr CatalogueSize Catalogue{95'000, 500};
constexpr int LinkCount = 100'000;

// A subtree of a thousand folders, and where its copy comes to stand.
constexpr int Groups = 27;
constexpr int GroupLength = 36;
constexpr int RowsOfSubtree = 1000 + Groups + 1;  // with those of "!UNORGANIZED"
constexpr auto SourceKey = "0900";
constexpr auto CopyKey = "0901";

std::string Below(const std::string& key, int number) {
  return key + folders::PadKey(number, folders::SegmentLength).toStdString();
}

void InsertSubtree(SqliteFile& file, const std::string& top, const std::string& name) {
  SqliteStatement levels[] = {file.Prepare("INSERT INTO tblLevel1 VALUES(?, ?)"),
                              file.Prepare("INSERT INTO tblLevel2 VALUES(?, ?)"),
                              file.Prepare("INSERT INTO tblLevel3 VALUES(?, ?)")};
  const auto insert = [&levels](const std::string& key, const std::string& folder) {
    SqliteStatement& statement = levels[key.size() / folders::SegmentLength - 1];
    statement.Bind(1, key);
    statement.Bind(2, folder);
    statement.Run();
  };
  insert(top, name);
  insert(Below(top, 0), "!UNORGANIZED");
  for (int group = 1; group <= Groups; ++group) {
    const std::string key = Below(top, group);
    insert(key, "Month " + std::to_string(group));
    insert(Below(key, 0), "!UNORGANIZED");
    for (int day = 1; day <= GroupLength; ++day) insert(Below(key, day), "Day " + std::to_string(day));
  }
}

std::string CountRows(const std::string& top) {
  std::string counts;
  for (const char* level : {"1", "2", "3"}) {
    counts += std::string(counts.empty() ? "" : " + ") + "(SELECT Count(*) FROM tblLevel" + level +
              " WHERE IDNo LIKE '" + top + "%')";
  }
  return "SELECT " + counts;
}

void Require(SqliteFile& file, const std::string& count, int expected) {
  auto counted = file.Prepare(count);
  counted.Step();
  if (counted.Integer(0) != expected) throw std::runtime_error(count + " gives " + counted.Text(0));
}

// The catalogue that both measure on, with the subtree and exactly so many links in the top folder.
QString MakeSource(const QString& data) {
  const QString program = data + QStringLiteral("/folders");
  if (QFile::exists(program)) return program;
  const QString part = CopyCatalogue(MakeCatalogue(data, Catalogue), program + QStringLiteral(".part"));
  SqliteFile file(part + QStringLiteral("/Database/Photos.mdb"));
  file.Run("BEGIN");
  InsertSubtree(file, SourceKey, "Journey");
  file.Run(
      "DELETE FROM tblPhotoLinks WHERE (IDNo, PhotoID) IN (SELECT Max(IDNo), PhotoID FROM tblPhotoLinks "
      "GROUP BY PhotoID HAVING Count(*) > 1 LIMIT (SELECT Count(*) FROM tblPhotoLinks) - " +
      std::to_string(LinkCount) + ")");
  file.Run("COMMIT");
  Require(file, "SELECT Count(*) FROM tblPhotoLinks", LinkCount);
  QDir().rename(part, program);
  return program;
}

QString DatabaseOf(const QString& program) { return program + QStringLiteral("/Database/Photos.mdb"); }

// A main window over a copy of the catalogue.
class FolderWindow {
 public:
  explicit FolderWindow(const QString& data)
      : Program(CopyCatalogue(MakeSource(data), data + QStringLiteral("/folder-window"))),
        Opened(Program),
        App(Program, Temporary.path()),
        Window(App, Opened.Paths(), Opened.Engine()) {
    Window.Form_Load();
    Window.show();
    Tree = Window.findChild<controls::TreeView*>();
    Settle();
  }

  void Click(const QString& folderKey) {
    for (int i = 1; i <= Tree->Count(); ++i) {
      if (Tree->NodeAt(i)->Tag() != folderKey) continue;
      Tree->Select(Tree->NodeAt(i));
      Q_EMIT Tree->NodeClick(Tree->NodeAt(i));
      return Settle();
    }
    throw std::runtime_error("no folder " + folderKey.toStdString());
  }
  void Choose(const char* item) { Window.findChild<QAction*>(QLatin1String(item))->trigger(); }
  void RequireRows(const std::string& count, int expected) {
    SqliteFile file(DatabaseOf(Program));
    Require(file, count, expected);
  }

 private:
  // What the window has still to draw would be drawn in the measured command.
  static void Settle() { QTest::qWait(100); }

  QString Program;
  QTemporaryDir Temporary;
  OpenedCatalogue Opened;
  shell::App App;
  shell::frmMain Window;
  controls::TreeView* Tree = nullptr;
};

double PasteFolders(const QString& data) {
  FolderWindow window(data);
  window.Click(QLatin1String(SourceKey));
  window.Choose("FolderCopy");
  window.Click({});
  const double time = Milliseconds([&] { window.Choose("FolderPaste"); });
  window.RequireRows(CountRows(CopyKey), RowsOfSubtree);
  return time;
}

// The rows of the copy, one by one, in one flushed transaction: so the program stores a paste.
double PasteBySqlite(const QString& data) {
  SqliteFile file(DatabaseOf(CopyCatalogue(MakeSource(data), data + QStringLiteral("/folder-sqlite"))));
  file.Run("PRAGMA synchronous = FULL");
  const double time = Milliseconds([&] {
    file.Run("BEGIN IMMEDIATE");
    InsertSubtree(file, CopyKey, "Copy of Journey");
    file.Run("COMMIT");
  });
  Require(file, CountRows(CopyKey), RowsOfSubtree);
  return time;
}

// The colon is the character behind the digits.
const std::string RangeOfTop =
    std::string("IDNo >= '") + TopFolderKey + "' AND IDNo < '" + TopFolderKey + ":'";
const std::string LinksLeft = "SELECT Count(*) FROM tblPhotoLinks WHERE " + RangeOfTop;

double DeleteFolder(const QString& data) {
  FolderWindow window(data);
  window.Click(QLatin1String(TopFolderKey));
  QTimer::singleShot(0, [] {
    qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Yes)->click();
  });
  const double time = Milliseconds([&] { window.Choose("FolderDel"); });
  window.RequireRows(LinksLeft, 0);
  return time;
}

// The statements of the delete by prepared statements and ranges of keys, in the one flushed transaction that
// the program has for them. The staging is in the working copy, which is not flushed there either.
double DeleteBySqlite(const QString& data) {
  const OpenedCatalogue opened(CopyCatalogue(MakeSource(data), data + QStringLiteral("/folder-sqlite")));
  SqliteFile file(opened.Paths().WorkFile);
  file.Run("ATTACH '" + opened.Paths().DatabaseFile.toStdString() + "' AS linked");
  file.Run("PRAGMA main.synchronous=OFF; PRAGMA main.journal_mode=MEMORY; PRAGMA linked.synchronous=FULL");
  const std::string unfiled(40, '0');
  const double time = Milliseconds([&] {
    file.Run("BEGIN IMMEDIATE; DELETE FROM ActPhotoLinks");
    file.Run("INSERT INTO ActPhotoLinks SELECT DISTINCT '" + unfiled +
             "', PhotoID FROM tblPhotoLinks WHERE " + RangeOfTop);
    file.Run("DELETE FROM tblPhotoLinks WHERE " + RangeOfTop);
    file.Run(
        "INSERT INTO tblPhotoLinks SELECT IDNo, PhotoID FROM ActPhotoLinks AS staged WHERE NOT EXISTS "
        "(SELECT 1 FROM tblPhotoLinks AS link WHERE link.PhotoID = staged.PhotoID AND "
        "substr(link.IDNo, 1, 4) = substr(staged.IDNo, 1, 4))");
    for (const char* level : {"3", "2", "1"}) {
      std::vector<std::string> keys;
      auto rows = file.Prepare(std::string("SELECT IDNo FROM tblLevel") + level + " WHERE " + RangeOfTop);
      while (rows.Step()) keys.push_back(rows.Text(0));
      auto remove = file.Prepare(std::string("DELETE FROM tblLevel") + level + " WHERE IDNo = ?");
      for (const std::string& key : keys) {
        remove.Bind(1, key);
        remove.Run();
      }
    }
    file.Run("COMMIT");
  });
  Require(file, LinksLeft, 0);
  return time;
}

}  // namespace

void AddFolderFigures(const std::string& data) {
  const QString directory = QString::fromStdString(data);
  AddFigure({"paste_1000_folders", "ms", [directory] { return PasteFolders(directory); },
             [directory] { return PasteBySqlite(directory); }, 7});
  AddFigure({"delete_folder_100k_links", "ms", [directory] { return DeleteFolder(directory); },
             [directory] { return DeleteBySqlite(directory); }, 5});
}

}  // namespace veldrin::benches
