// Makes the sample catalogue: make_sample <program directory> <ready-made Database/> <directory of sample
// photos>. It files the painted photographs through the program's own code. A program directory that has a
// Database/ already is left alone; a new one comes into being whole.

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <iostream>

#include "base/runtime_error.h"
#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "folders/folder_tree.h"
#include "records/photo_storing.h"
#include "samples/sample_list.h"

namespace {

using namespace veldrin;

[[noreturn]] void Fail(const QString& text) { throw base::RuntimeError(base::errPathFileAccess, text); }

void CopyDirectory(const QString& from, const QString& to) {
  if (!QDir().mkpath(to)) Fail(to);
  QDirIterator entries(from, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    const QString source = entries.next();
    const QString target = to + QLatin1Char('/') + QDir(from).relativeFilePath(source);
    if (entries.fileInfo().isDir() ? !QDir().mkpath(target) : !QFile::copy(source, target)) Fail(target);
  }
}

class SampleMaker {
 public:
  SampleMaker(const QString& programPath, QString photos) : Photos(std::move(photos)) {
    const QString database = programPath + QStringLiteral("/Database/");
    Paths.DatabaseFile = database + QStringLiteral("Photos.mdb");
    Paths.ImageDir = database + QStringLiteral("Images/");
    Paths.ThumbDir = Paths.ImageDir + QStringLiteral("Thumbnails/");
    Paths.MusicDir = database + QStringLiteral("Music/");
    Paths.TempDir = Temp.path() + QLatin1Char('/');
    Engine.SystemDB = database + QStringLiteral("Veldrin.MDW");
    if (!catalogue::CreateWorkFile(Paths, Engine, programPath) || !catalogue::OpenCatalogue(Paths, Engine)) {
      Fail(database);
    }
  }

  void MakeFolders() {
    for (const QString& path : samples::SampleFolders()) {
      const QString parentKey = Keys.value(path.section(QLatin1Char('/'), 0, -2));
      Keys[path] = folders::AddFolderRecord(Engine, Paths.WorkFile, folders::LevelOfKey(parentKey) + 1,
                                            path.section(QLatin1Char('/'), -1), parentKey);
    }
  }

  void StoreSample(const samples::Sample& sample) {
    const QStringList places = QString::fromUtf8(sample.Folders).split(QLatin1Char('|'));
    records::PhotoBatch batch;
    batch.Directory = Photos;
    batch.Names = {QLatin1String(sample.Name)};
    batch.LinkKey = folders::LinkKey(KeyOf(places.front()));
    batch.Title = QString::fromUtf8(sample.Title);
    batch.Description = QString::fromUtf8(sample.Description);
    batch.MadeBy = QString::fromUtf8(sample.MadeBy);
    const int photoId = records::StorePhotos(Paths, Engine, batch).front().PhotoID;
    const auto database = Engine.OpenDatabase(Paths.WorkFile);
    for (const QString& place : places.mid(1)) {
      database->Execute(QStringLiteral("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES('%1', %2)")
                            .arg(folders::LinkKey(KeyOf(place)))
                            .arg(photoId),
                        engine::dbFailOnError);
    }
  }

  /// Storing passes over its errors, so what it left is counted.
  void Check() {
    const auto database = Engine.OpenDatabase(Paths.WorkFile);
    const auto stored =
        database->OpenRecordset(QStringLiteral("SELECT Count(PhotoID) AS Stored FROM tblPhotos"));
    const auto files = QDir(Paths.ImageDir).entryList(QDir::Files).size();
    const auto wanted = static_cast<qsizetype>(samples::Samples().size());
    if (stored->Field(QStringLiteral("Stored")).toInt() != wanted || files != wanted) Fail(Paths.ImageDir);
  }

 private:
  QString KeyOf(const QString& place) const {
    if (!place.isEmpty() && !Keys.contains(place)) Fail(place);
    return Keys.value(place);
  }

  QTemporaryDir Temp;
  QString Photos;
  catalogue::Paths Paths;
  engine::DBEngine Engine;
  QHash<QString, QString> Keys;  // By path; the root's is empty.
};

void MakeSample(const QString& program, const QString& readyMade, const QString& photos) {
  const QString database = program + QStringLiteral("/Database");
  if (QFile::exists(database)) return;
  const QString part = program + QStringLiteral("/sample.part");
  QDir(part).removeRecursively();
  CopyDirectory(readyMade, part + QStringLiteral("/Database"));
  {
    SampleMaker maker(part, photos);
    maker.MakeFolders();
    for (const samples::Sample& sample : samples::Samples()) maker.StoreSample(sample);
    maker.Check();
  }
  if (!QDir().rename(part + QStringLiteral("/Database"), database)) Fail(database);
  QDir(part).removeRecursively();
}

// There is nobody to press the button of a message box: the only event loop that ever runs here is such a
// box's.
void EndAtFirstBox() {
  QTimer::singleShot(0, [] {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    std::cerr << "make_sample: " << (box == nullptr ? "a dialog" : box->text().toStdString()) << '\n';
    std::exit(1);
  });
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc != 4) {
    std::cerr
        << "usage: make_sample <program directory> <ready-made Database/> <directory of sample photos>\n";
    return 2;
  }
  EndAtFirstBox();
  try {
    const auto absolute = [&](int argument) {
      return QDir(QString::fromLocal8Bit(argv[argument])).absolutePath();
    };
    MakeSample(absolute(1), absolute(2), absolute(3));
  } catch (const base::RuntimeError& error) {
    std::cerr << "make_sample: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
