// Filing many records in another folder.

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/sqlite_file.h"
#include "folders/folder_keys.h"
#include "folders/folder_nodes.h"
#include "folders/folder_tree.h"
#include "records/record_clipboard.h"

namespace veldrin::benches {

namespace {

constexpr CatalogueSize Catalogue{100'000, 500};
constexpr int RecordCount = 10'000;

class ClipboardBench {
 public:
  explicit ClipboardBench(const QString& program)
      : Opened(program),
        Data1(Opened.Engine()),
        Source(
            Data1, [this] { return folders::SelectedFolderKey(Tree); }, Opened.Engine(), Opened.Paths()),
        Clipboard(Data1, Tree, Source, Opened.Engine(), Opened.Paths(), [](const base::WorkReport&) {}) {
    Data1.DatabaseName = Opened.Paths().WorkFile;
    folders::LoadFolderTree(Tree, Opened.Engine(), Opened.Paths().WorkFile);
    From = Find(QLatin1String(TopFolderKey));
    To = Find(QLatin1String("0002"));
  }

  double Stage() {
    Select(From);
    for (int i = 0; i < RecordCount; ++i) {
      Data1.SetAbsolutePosition(i);
      Data1.SelBookmarks.Add(Data1.Bookmark());
    }
    return Milliseconds([&] { Clipboard.RecordCopy_Click(); });
  }

  double Paste() {
    Stage();
    Tree.Select(To);
    const double time = Milliseconds([&] { Clipboard.RecordPaste_Click(); });
    if (Data1.RecordCount() < RecordCount) throw std::runtime_error("not pasted");
    return time;
  }

 private:
  controls::Node* Find(const QString& key) {
    for (int i = 1; i <= Tree.Count(); ++i)
      if (Tree.NodeAt(i)->Tag() == key) return Tree.NodeAt(i);
    throw std::runtime_error("no such folder");
  }
  void Select(controls::Node* node) {
    Tree.Select(node);
    Source.SetRecordSource();
  }

  OpenedCatalogue Opened;
  controls::TreeView Tree;
  catalogue::RecordList Data1;
  catalogue::RecordSource Source;
  records::RecordClipboard Clipboard;
  controls::Node* From;
  controls::Node* To;
};

// The same rows by SQLite's C interface: staged by one statement, pasted by one transaction that is flushed.
class SqliteClipboard {
 public:
  explicit SqliteClipboard(const QString& program) : Opened(program), File(Opened.Paths().WorkFile) {
    File.Run("ATTACH '" + Opened.Paths().DatabaseFile.toStdString() + "' AS linked");
    File.Run("PRAGMA main.synchronous=OFF; PRAGMA main.journal_mode=MEMORY; PRAGMA linked.synchronous=FULL");
  }

  double Stage() {
    return Milliseconds([&] {
      File.Run("DELETE FROM ActPhotoLinks; BEGIN");
      auto keys =
          File.Prepare("SELECT PhotoID FROM tblPhotos ORDER BY PhotoID LIMIT " + std::to_string(RecordCount));
      auto insert = File.Prepare("INSERT INTO ActPhotoLinks (IDNo, PhotoID) VALUES (?, ?)");
      while (keys.Step()) {
        insert.Bind(1, Key("0001"));
        insert.Bind(2, keys.Integer(0));
        insert.Run();
      }
      File.Run("COMMIT");
    });
  }

  double Paste() {
    Stage();
    return Milliseconds([&] {
      File.Run("BEGIN IMMEDIATE");
      File.Run("DELETE FROM tblPhotoLinks WHERE PhotoID IN (SELECT PhotoID FROM ActPhotoLinks) AND IDNo = '" +
               Key("0002") + "'");
      File.Run("INSERT INTO tblPhotoLinks SELECT '" + Key("0002") + "', PhotoID FROM ActPhotoLinks");
      File.Run("DELETE FROM ActPhotoLinks");
      File.Run("COMMIT");
    });
  }

 private:
  static std::string Key(const char* folder) { return folders::LinkKey(QLatin1String(folder)).toStdString(); }

  OpenedCatalogue Opened;
  SqliteFile File;
};

// Made at the first measurement, on a catalogue of its own.
template <class Bench>
std::function<Bench&()> Once(const std::string& data, const char* name) {
  const auto made = std::make_shared<std::unique_ptr<Bench>>();
  return [data, name, made]() -> Bench& {
    if (!*made) {
      const QString directory = QString::fromStdString(data);
      *made = std::make_unique<Bench>(
          CopyCatalogue(MakeCatalogue(directory, Catalogue), directory + QLatin1String(name)));
    }
    return **made;
  };
}

}  // namespace

void AddClipboardFigures(const std::string& data) {
  const auto bench = Once<ClipboardBench>(data, "/paste");
  const auto reference = Once<SqliteClipboard>(data, "/paste-sqlite");
  AddFigure({"copy_10000_records", "ms", [bench] { return bench().Stage(); },
             [reference] { return reference().Stage(); }, 11});
  AddFigure({"paste_10000_records", "ms", [bench] { return bench().Paste(); },
             [reference] { return reference().Paste(); }, 11});
}

}  // namespace veldrin::benches
