// The views, and the dialogs of the main window.
#include <QDragEnterEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include "catalogue/image_store.h"
#include "controls/dir_list.h"
#include "controls/file_list.h"
#include "records/control_drag.h"
#include "tour/tour.h"

namespace veldrin::tour {

namespace {

void DataView(Tour& tour) {
  auto& grid = tour.Get<QTableView>("TDBGrid1");
  const int portrait = tour.FindPhoto([](QSize size) { return size.height() > size.width(); });
  tour.Save("02-data-view");
  tour.GoTo(portrait);
  tour.Save("02-data-view-portrait");
  QFile::rename(tour.StoredImage(portrait), tour.Aside());
  tour.GoTo(0);
  tour.GoTo(portrait);
  tour.Save("02-data-view-missing-image");
  QFile::rename(tour.Aside(), tour.StoredImage(portrait));
  tour.GoTo(3);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
  tour.Save("02-data-view-selection");
  tour.SaveMenu("RecordMenu", QPoint(400, 260), "02-record-menu");
  tour.SaveModal("02-delete-question", [&tour] { tour.Choose("RecordDel"); });
  tour.SelectFolder(QStringLiteral("Family"));
  tour.SaveModal("02-remove-question", [&tour] { tour.Choose("RecordRmv"); });
  tour.SelectFolder(QStringLiteral("Photos"));
}

// No desktop, and so no program for a picture.
void SaveNoProgram(Tour& tour) {
  const QTemporaryDir nothing;
  for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"})
    qputenv(name, nothing.path().toUtf8());
  tour.SaveModal("02-no-program", [&tour] { tour.Get<QPushButton>("ViewBttn").click(); });
}

void FormView(Tour& tour) {
  tour.GoTo(1);
  tour.Choose("MainForm");
  tour.Save("02-form-view");
  QImage tiny(6, 4, QImage::Format_RGB32);
  tiny.fill(Qt::darkCyan);
  tiny.setPixelColor(2, 1, Qt::yellow);
  tour.GoTo(2);
  QFile::rename(tour.StoredImage(2), tour.Aside());
  tiny.save(tour.StoredImage(2));
  tour.Choose("MainData");
  tour.Choose("MainForm");
  tour.Get<QPlainTextEdit>("eDescription")
      .setPlainText(QString(25, QLatin1Char('x')) +
                    QStringLiteral(" two lines of a description").repeated(8));
  tour.Save("02-form-view-tiny");
  const QSize size = tour.Window().size();
  tour.Window().resize(size.width(), 560);
  tour.Save("02-form-view-low-window");
  tour.Window().resize(size);
  QFile::remove(tour.StoredImage(2));
  QFile::rename(tour.Aside(), tour.StoredImage(2));
  tour.Choose("MainData");
  SaveNoProgram(tour);
}

// The first folder with fewer photos than a page has cells.
void SelectShortFolder(Tour& tour) {
  auto& tree = tour.Tree();
  for (int i = 2; i <= tree.Count(); ++i) {
    tree.Select(tree.NodeAt(i));
    Q_EMIT tree.NodeClick(tree.NodeAt(i));
    const bool real = tree.NodeAt(i)->Text() != QStringLiteral("!UNORGANIZED");
    if (real && !tour.Get("picThumb(1)").isHidden() && tour.Get("picThumb(9)").isHidden()) return;
  }
}

// One image has gone and one is cut off; their thumbnails are not there either.
void SaveBrokenPhotos(Tour& tour) {
  const int missing = 1;
  const int damaged = 6;
  const auto thumbnail = [&tour](int row) {
    return catalogue::ThumbFileName(tour.Paths(), QFileInfo(tour.StoredImage(row)).baseName().toInt());
  };
  QFile file(tour.StoredImage(damaged));
  if (!file.open(QIODevice::ReadWrite)) throw std::runtime_error("no photo to damage");
  const QByteArray whole = file.readAll();
  file.resize(whole.size() / 3);
  QFile::rename(tour.StoredImage(missing), tour.Aside());
  for (const int row : {missing, damaged}) QFile::remove(thumbnail(row));
  tour.Get<QPushButton>("RefreshBttn").click();
  tour.Save("03-image-view-missing-and-damaged");
  QFile::rename(tour.Aside(), tour.StoredImage(missing));
  file.seek(0);
  file.write(whole);
  file.close();
  tour.Get<QPushButton>("RefreshBttn").click();
}

void Browse(Tour& tour) {
  tour.Choose("MainImage");
  tour.Save("03-image-view-full");
  SaveBrokenPhotos(tour);
  for (int cell : {1, 3, 4}) {
    QTest::mouseClick(&tour.Get(qPrintable(QStringLiteral("ImgThumb(%1)").arg(cell))), Qt::LeftButton,
                      Qt::ControlModifier);
  }
  tour.Save("04-selection");
  SelectShortFolder(tour);
  tour.Save("05-image-view-short");
  tour.SaveFolderMenu("06-folder-menu");
}

void AddNew(Tour& tour) {
  tour.Choose("MainAdd");
  auto& files = tour.Get<controls::FileListBox>("FileToSel");
  tour.Get<controls::DirListBox>("Dir1").SetPath(tour.Photographs());
  QTest::keyClick(&files, Qt::Key_Home);
  tour.Save("08-add-new");
  QTest::keyClick(&files, Qt::Key_Down, Qt::ShiftModifier);
  tour.Save("09-add-new-several");
  const auto data = records::MakeControlDrag(tour.Get("picNew"));
  auto& folder = tour.Get("ImgFolder");
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&folder, &enter);
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&folder, &drop);
  tour.Save("10-add-new-dropped");
  tour.Choose("MainData");
}

void Dialogs(Tour& tour) {
  tour.SaveModal("11-setup", [&tour] { tour.Choose("FileSetup"); });
  tour.SaveModal("12-about", [&tour] { tour.Choose("HelpAbout"); });
  tour.SaveModal("13-folder-not-found", [&tour] { tour.SelectFolder(QStringLiteral("no such folder")); });
  tour.SelectFolder(QStringLiteral("Photos"));
}

}  // namespace

void TakeViewPictures(Tour& tour) {
  DataView(tour);
  FormView(tour);
  Browse(tour);
  AddNew(tour);
  Dialogs(tour);
}

}  // namespace veldrin::tour
