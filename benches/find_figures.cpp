// Narrowing the list by a query, and going to the next record that matches.

#include <QApplication>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/sqlite_file.h"
#include "catalogue/record_source.h"
#include "folders/folder_nodes.h"

namespace veldrin::benches {

namespace {

// Fewer folders than the large catalogue has, so that one of the second level shows some 50,000 photos.
constexpr CatalogueSize WideCatalogue{1'000'000, 500};
constexpr auto WideFolderKey = "00010002";
constexpr auto TitlePart = "number 777";
constexpr auto LateTitle = "number 999990";

// The list as a query makes it, and beside it SQLite with its own LIKE on a connection that is open and warm.
class QueryBench {
 public:
  QueryBench(const QString& program, const QString& folderKey)
      : Opened(program),
        File(Opened.Paths().DatabaseFile),
        Data1(Opened.Engine()),
        Source(
            Data1, [this] { return folders::SelectedFolderKey(Tree); }, Opened.Engine(), Opened.Paths()),
        FolderKey(folderKey.toStdString()) {
    Data1.DatabaseName = Opened.Paths().WorkFile;
    controls::Node* node = Tree.Add(nullptr, QStringLiteral("Photos"));
    if (!folderKey.isEmpty()) {
      node = Tree.Add(node, QStringLiteral("Folder"));
      node->SetTag(folderKey);
    }
    Tree.Select(node);
  }

  double Query() {
    Source.Query.QryTitle = QLatin1String(TitlePart);
    // After a change the list can't be the one that was kept.
    Opened.Engine()
        .OpenDatabase(Opened.Paths().WorkFile)
        ->Execute(QStringLiteral("UPDATE tblPhotos SET Title = Title WHERE PhotoID = 1"));
    const double time = Milliseconds([this] { Source.SetRecordSource(); });
    RequireMatches(Data1.RecordCount());
    return time;
  }

  double QueryBySqlite() {
    std::string sql = "SELECT PhotoID FROM tblPhotos WHERE ";
    if (!FolderKey.empty()) {
      sql += "PhotoID IN (SELECT PhotoID FROM tblPhotoLinks WHERE IDNo >= '" + FolderKey + "' AND IDNo < '" +
             FolderKey + ":') AND ";
    }
    sql += "Title LIKE '%" + std::string(TitlePart) + "%'";
    int count = 0;
    const double time = Milliseconds([&] {
      auto rows = File.Prepare(sql);
      while (rows.Step()) count += rows.Integer(0) > 0 ? 1 : 0;
    });
    RequireMatches(count);
    return time;
  }

  double FindNext() {
    if (Data1.RecordCount() == 0 || !Source.Query.QryTitle.isEmpty()) {
      Source.ClearQuery();
      Source.SetRecordSource();
    }
    Data1.SetAbsolutePosition(10);
    const double time = Milliseconds(
        [this] { Data1.FindNext(QStringLiteral("[Title] LIKE '*%1*'").arg(QLatin1String(LateTitle))); });
    if (Data1.AbsolutePosition() != 999'989) throw std::runtime_error("found another record");
    return time;
  }

  double FindBySqlite() {
    return Milliseconds([this] {
      auto rows = File.Prepare("SELECT PhotoID FROM tblPhotos WHERE PhotoID > 11 AND Title LIKE '%" +
                               std::string(LateTitle) + "%' ORDER BY PhotoID LIMIT 1");
      if (!rows.Step() || rows.Integer(0) != 999'990) throw std::runtime_error("found another row");
    });
  }

 private:
  // Both must find the same.
  void RequireMatches(int count) {
    if (Matches == 0) Matches = count;
    if (count == 0 || count != Matches) throw std::runtime_error("matches: " + std::to_string(count));
  }

  OpenedCatalogue Opened;
  SqliteFile File;
  controls::TreeView Tree;
  catalogue::RecordList Data1;
  catalogue::RecordSource Source;
  std::string FolderKey;
  int Matches = 0;
};

}  // namespace

void AddFindFigures(const std::string& data) {
  const QString directory = QString::fromStdString(data);
  const auto open = [directory](CatalogueSize size, const QString& folderKey) {
    return std::make_unique<QueryBench>(MakeCatalogue(directory, size), folderKey);
  };
  const auto root = Lazy([open] { return open(LargeCatalogue, {}); });
  const auto folder = Lazy([open] { return open(WideCatalogue, QLatin1String(WideFolderKey)); });
  AddFigure({"query_title_1m", "ms", [root] { return root().Query(); },
             [root] { return root().QueryBySqlite(); }, 7});
  AddFigure({"query_in_folder_50k", "ms", [folder] { return folder().Query(); },
             [folder] { return folder().QueryBySqlite(); }, 7});
  AddFigure({"find_next_1m", "ms", [root] { return root().FindNext(); },
             [root] { return root().FindBySqlite(); }, 7});
}

}  // namespace veldrin::benches
