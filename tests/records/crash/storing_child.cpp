// Opens a catalogue and stores all files of a directory, to be killed while it does.
// Arguments: program directory, DatabaseFile, ImageDir, TempDir, SystemDB, directory of the sources.
#include <dlfcn.h>

#include <QCoreApplication>
#include <QDir>

#include "catalogue/schema.h"
#include "folders/folder_keys.h"
#include "records/photo_storing.h"

using namespace veldrin;

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  catalogue::Paths paths;
  paths.DatabaseFile = arguments[2];
  paths.ImageDir = arguments[3];
  paths.TempDir = arguments[4];
  engine::DBEngine engine;
  engine.SystemDB = arguments[5];
  if (!catalogue::CreateWorkFile(paths, engine, arguments[1]) || !catalogue::OpenCatalogue(paths, engine))
    return 2;

  records::PhotoBatch batch;
  batch.Directory = arguments[6];
  batch.Names = QDir(batch.Directory).entryList(QDir::Files, QDir::Name);
  batch.LinkKey = folders::LinkKey({});
  batch.RemoveSources = true;
  batch.GroupSize = 8;
  if (auto* begin = reinterpret_cast<void (*)()>(dlsym(RTLD_DEFAULT, "BeginToCount"))) begin();
  return records::StorePhotos(paths, engine, batch).front().PhotoID == 1 ? 0 : 3;
}
