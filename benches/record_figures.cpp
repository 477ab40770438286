// One photo after the other in Form View, a jump in the grid, deleting many photos.

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>
#include <filesystem>
#include <random>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "benches/sqlite_file.h"
#include "browse/record_grid.h"
#include "catalogue/image_store.h"
#include "pictures/picture_cache.h"
#include "records/form_view.h"
#include "shell/main_window.h"

namespace veldrin::benches {

namespace {

constexpr int LargePictures = 12;
constexpr int DeletedPhotos = 1000;

// A list on the whole of a catalogue.
struct OpenedList {
  explicit OpenedList(const QString& program) : Opened(program), Data1(Opened.Engine()) {
    Data1.DatabaseName = Opened.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
  }

  OpenedCatalogue Opened;
  catalogue::RecordList Data1;
};

class FormBench {
 public:
  explicit FormBench(const std::string& data)
      : Pictures(MakeLargePictures(data, LargePictures)),
        List(MakePictureCatalogue(QString::fromStdString(data + "/form"), Pictures)),
        Form(List.Data1, List.Opened.Paths(), List.Opened.Engine(), Cache) {
    Form.resize(829, 654);
    Form.show();
    QCoreApplication::processEvents();
  }

  double Next() {
    if (List.Data1.AbsolutePosition() == LargePictures - 1) Form.First_Click();
    return Milliseconds([&] {
      Form.Next_Click();
      QCoreApplication::processEvents();  // paints it
    });
  }

  // The file that Next showed.
  double Decode() const {
    const auto at = static_cast<size_t>(List.Data1.AbsolutePosition());
    return Milliseconds([&] {
      if (QImage(QString::fromStdString(Pictures[at])).isNull()) throw std::runtime_error("no picture");
    });
  }

 private:
  std::vector<std::string> Pictures;
  OpenedList List;
  pictures::PictureCache Cache;
  records::FormView Form;
};

class GridBench {
 public:
  explicit GridBench(const QString& program)
      : List(program), Grid(List.Data1, nullptr), File(List.Opened.Paths().DatabaseFile) {
    Grid.resize(553, 653);
    Grid.show();
    QCoreApplication::processEvents();
    RowsShown = Grid.viewport()->height() / Grid.rowHeight(0) + 1;
  }

  double Jump() {
    Row = std::uniform_int_distribution(0, List.Data1.RecordCount() - RowsShown)(Random);
    return Milliseconds([&] {
      Grid.verticalScrollBar()->setValue(Row);
      Grid.viewport()->repaint();
    });
  }

  // The rows that Jump showed.
  double Fetch() {
    std::vector<int> keys;
    for (int i = 0; i < RowsShown; ++i) keys.push_back(List.Data1.BookmarkAt(Row + i));
    return Milliseconds([&] {
      auto row = File.Prepare("SELECT * FROM tblPhotos WHERE PhotoID = ?");
      for (const int key : keys) {
        row.Bind(1, key);
        if (!row.Step()) throw std::runtime_error("no row " + std::to_string(key));
        for (int column = 0; column < 7; ++column) row.Text(column);
        row.Reset();
      }
    });
  }

 private:
  OpenedList List;
  browse::RecordGrid Grid;
  SqliteFile File;
  std::mt19937 Random{1};
  int RowsShown = 0;
  int Row = 0;
};

// Photos with stored images and thumbnails, each in one folder.
QString MakePhotosToDelete(const std::string& data) {
  std::vector<std::string> pictures;
  for (const auto& entry : std::filesystem::directory_iterator(MakeManyPictures(data, DeletedPhotos))) {
    pictures.push_back(entry.path().string());
  }
  const QString program = MakePictureCatalogue(QString::fromStdString(data + "/delete"), pictures);
  const OpenedCatalogue opened(program);
  const std::string bitmap(60'000, 'b');
  for (int id = 1; id <= DeletedPhotos; ++id) {
    QFile file(catalogue::ThumbFileName(opened.Paths(), id));
    if (!file.open(QIODevice::WriteOnly) || file.write(bitmap.data(), 60'000) != 60'000)
      throw std::runtime_error("no thumbnail");
  }
  RunShell("sync");
  return program;
}

void CheckAllDeleted(const catalogue::Paths& paths) {
  const auto left =
      QDir(paths.ImageDir).entryList(QDir::Files).size() + QDir(paths.ThumbDir).entryList(QDir::Files).size();
  if (left != 0) throw std::runtime_error("files left: " + std::to_string(left));
}

double DeleteSelected(const QString& program) {
  const QTemporaryDir temporary;
  OpenedCatalogue opened(program);
  const shell::App app(program, temporary.path());
  shell::frmMain window(app, opened.Paths(), opened.Engine());
  window.Form_Load();
  window.show();
  window.findChild<QAction*>(QStringLiteral("RecordAll"))->trigger();
  QCoreApplication::processEvents();
  QTimer::singleShot(0, [] {
    qobject_cast<QMessageBox*>(QApplication::activeModalWidget())->button(QMessageBox::Yes)->click();
  });
  const double time =
      Milliseconds([&] { window.findChild<QAction*>(QStringLiteral("RecordDel"))->trigger(); });
  CheckAllDeleted(opened.Paths());
  return time;
}

double DeleteBySqlite(const QString& program) {
  const OpenedCatalogue opened(program);
  SqliteFile file(opened.Paths().DatabaseFile);
  file.Run("PRAGMA synchronous = FULL");
  const double time = Milliseconds([&] {
    auto links = file.Prepare("DELETE FROM tblPhotoLinks WHERE PhotoID = ?");
    auto photos = file.Prepare("DELETE FROM tblPhotos WHERE PhotoID = ?");
    constexpr int group = 128;  // flushed in groups as large as the program's
    for (int id = 1; id <= DeletedPhotos; ++id) {
      if (id % group == 1) file.Run("BEGIN IMMEDIATE");
      links.Bind(1, id);
      links.Run();
      photos.Bind(1, id);
      photos.Run();
      if (id % group == 0 || id == DeletedPhotos) file.Run("COMMIT");
      for (const QString& name : {catalogue::ThumbFileName(opened.Paths(), id),
                                  catalogue::ImageFileName(opened.Paths(), id, QStringLiteral("jpg"))}) {
        std::filesystem::remove(name.toStdString());
      }
    }
  });
  CheckAllDeleted(opened.Paths());
  return time;
}

}  // namespace

void AddRecordFigures(const std::string& data) {
  const auto form = Lazy([data] { return std::make_unique<FormBench>(data); });
  AddFigure(
      {"form_next_24mp", "ms", [form] { return form().Next(); }, [form] { return form().Decode(); }, 11});
  const auto grid = Lazy([data] {
    return std::make_unique<GridBench>(MakeCatalogue(QString::fromStdString(data), LargeCatalogue));
  });
  AddFigure({"grid_page_1m", "ms", [grid] { return grid().Jump(); }, [grid] { return grid().Fetch(); }, 201});
  AddFigure({"delete_1000", "ms", [data] { return DeleteSelected(MakePhotosToDelete(data)); },
             [data] { return DeleteBySqlite(MakePhotosToDelete(data)); }, 3});
}

}  // namespace veldrin::benches
