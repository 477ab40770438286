#include "support/test_support.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QDragEnterEvent>
#include <QPainter>
#include <QTimer>

#include "catalogue/image_store.h"
#include "catalogue/schema.h"
#include "controls/picture_loader.h"
#include "engine/sql_tokens.h"
#include "folders/folder_keys.h"

namespace veldrin::test {

QStringList AnswerBoxes(const std::function<void()>& action,
                        const QList<QMessageBox::StandardButton>& answers) {
  QStringList seen;
  QTimer timer;
  timer.setInterval(0);
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    const auto button =
        seen.size() < answers.size() ? answers[seen.size()] : box->standardButton(box->buttons().front());
    seen << box->windowTitle() + u'|' + box->text();
    if (box->button(button) == nullptr) {
      ADD_FAILURE() << "no such button in the box " << seen.back().toStdString();
      return box->reject();
    }
    box->button(button)->click();
  });
  timer.start();
  action();
  EXPECT_EQ(seen.size(), answers.size()) << "boxes seen: " << seen.join(u'\n').toStdString();
  return seen;
}

void InDialog(const std::function<void()>& open, const std::function<void(QWidget& dialog)>& use) {
  bool opened = false;
  QTimer::singleShot(0, qApp, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    opened = dialog != nullptr;
    if (!opened) return QApplication::closeAllWindows();
    use(*dialog);
    dialog->close();
  });
  open();
  EXPECT_TRUE(opened);
}

void WaitForPictures() {
  const auto areIdle = [] {
    for (const QWidget* window : QApplication::topLevelWidgets())
      for (const auto* loader : window->findChildren<controls::PictureLoader*>())
        if (!loader->IsIdle()) return false;
    return true;
  };
  if (!areIdle() && !QTest::qWaitFor(areIdle)) ADD_FAILURE() << "pictures don't come";
}

bool Drop(QWidget& target, const QMimeData& data) {
  const QPoint middle = target.rect().center();
  QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&target, &enter);
  QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
  if (enter.isAccepted()) QCoreApplication::sendEvent(&target, &drop);
  return enter.isAccepted() && drop.isAccepted();
}

int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const base::RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

void WritePicture(const QString& path, QSize size, QColor color) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(color);
  QPainter(&image).fillRect(0, 0, size.width() / 2, size.height() / 2, Qt::white);
  ASSERT_TRUE(image.save(path)) << path.toStdString();
}

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  ASSERT_EQ(file.write(bytes), bytes.size());
}

std::string NamesIn(const QString& directory) {
  return QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(u' ').toStdString();
}

QByteArray Jpeg(int number) {
  QImage image(24, 24, QImage::Format_RGB32);
  image.fill(QColor::fromHsv(number * 17, 255, 255));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "JPG");
  return bytes;
}

bool UseMemoryDisk() { return QFileInfo("/dev/shm").isWritable() && qputenv("TMPDIR", "/dev/shm"); }

TestCatalogue::TestCatalogue(bool open) {
  const QString database = Directory.path() + "/Database";
  for (const char* path : {"/Database/Images/Thumbnails", "/Database/Music", "/Temp"})
    QDir().mkpath(Directory.path() + QLatin1String(path));
  for (const char* name : {"Photos.mdb", "TmpPhotos.mdb", "Veldrin.MDW"}) {
    const QString file = "/" + QLatin1String(name);
    EXPECT_TRUE(QFile::copy(QStringLiteral(READY_MADE_DIR) + file, database + file));
  }
  ThePaths.IniFile = Directory.path() + "/Ini/Veldrin.ini";
  ThePaths.DatabaseFile = database + "/Photos.mdb";
  ThePaths.ImageDir = database + "/Images/";
  ThePaths.ThumbDir = database + "/Images/Thumbnails/";
  ThePaths.MusicDir = database + "/Music/";
  ThePaths.TempDir = Directory.path() + "/Temp/";
  ThePaths.MailDir = Directory.path() + "/Cache/Mail/";
  TheEngine.SystemDB = database + "/Veldrin.MDW";
  if (open) {
    EXPECT_TRUE(catalogue::CreateWorkFile(ThePaths, TheEngine, ProgramPath()));
    EXPECT_TRUE(catalogue::OpenCatalogue(ThePaths, TheEngine));
  }
}

void TestCatalogue::Execute(const QStringList& statements) {
  const auto database = TheEngine.OpenDatabase(ThePaths.WorkFile);
  for (const QString& statement : statements) database->Execute(statement, engine::dbFailOnError);
}

QStringList TestCatalogue::Rows(const QString& sql) {
  const auto database = TheEngine.OpenDatabase(ThePaths.WorkFile);
  const auto recordset = database->OpenRecordset(sql, engine::dbOpenSnapshot);
  QStringList rows;
  for (const auto& row : recordset->ReadRows(0, recordset->RecordCount())) {
    QStringList values;
    for (const auto& value : row) values << (engine::IsNull(value) ? "<null>" : value.toString());
    rows << values.join(u'|');
  }
  return rows;
}

void TestCatalogue::AddFolder(const QString& key, const QString& name) {
  Execute({QStringLiteral("INSERT INTO %1 (IDNo, FolderName) VALUES('%2', '%3')")
               .arg(catalogue::LevelTable(folders::LevelOfKey(key)), key, engine::QuoteSql(name))});
}

void TestCatalogue::AddPhoto(int photoId, const QString& title, const QStringList& folderKeys, QSize size) {
  Execute({QStringLiteral("INSERT INTO tblPhotos (PhotoID, ImageType, Title, CreateDate) VALUES(%1, 'jpg', "
                          "'%2', #7/4/2001#)")
               .arg(photoId)
               .arg(engine::QuoteSql(title))});
  for (const QString& key : folderKeys) {
    Execute({QStringLiteral("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES('%1', %2)")
                 .arg(folders::LinkKey(key))
                 .arg(photoId)});
  }
  if (size.isValid()) WritePicture(catalogue::ImageFileName(ThePaths, photoId, "jpg"), size);
}

}  // namespace veldrin::test
