// Storing new photos.

#include <QDir>
#include <filesystem>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "folders/folder_keys.h"
#include "records/photo_storing.h"

namespace veldrin::benches {

namespace {

constexpr int PictureCount = 1000;

double StoreAll(const std::string& pictures, const QString& program) {
  MakeEmptyCatalogue(program);
  OpenedCatalogue opened(program);
  records::PhotoBatch batch;
  batch.Directory = QString::fromStdString(pictures);
  batch.Names = QDir(batch.Directory).entryList(QDir::Files, QDir::Name);
  batch.LinkKey = folders::LinkKey(QString());
  RunShell("sync");  // What others have not flushed is not this run's.
  const double time = Milliseconds([&] { records::StorePhotos(opened.Paths(), opened.Engine(), batch); });
  const auto stored = QDir(opened.Paths().ImageDir).entryList(QDir::Files).size();
  if (stored != PictureCount) throw std::runtime_error("stored " + std::to_string(stored));
  return time;
}

double CopyAll(const std::string& pictures, const std::string& target) {
  std::filesystem::remove_all(target);
  RunShell("sync");
  return Milliseconds([&] { RunShell("cp -r '" + pictures + "' '" + target + "' && sync"); });
}

}  // namespace

void AddStoringFigures(const std::string& data) {
  AddFigure({"add_1000", "ms",
             [data] {
               return StoreAll(MakeManyPictures(data, PictureCount), QString::fromStdString(data + "/add"));
             },
             [data] { return CopyAll(MakeManyPictures(data, PictureCount), data + "/copy"); }, 3});
}

}  // namespace veldrin::benches
