// Copying photos out of the catalogue.

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTimer>
#include <filesystem>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "output/get_photos.h"

namespace veldrin::benches {

namespace {

constexpr int GetCount = 1000;

class GetBench {
 public:
  GetBench(const QString& program, QString target)
      : Target(std::move(target)),
        Opened(program),
        Data1(Opened.Engine()),
        Getter([this] { return Data1.Chosen(true); }, Opened.Engine(), Opened.Paths(), Window, Work,
               [](const base::WorkReport&) {}) {
    Data1.DatabaseName = Opened.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
    std::vector<int> selected(GetCount);
    for (int i = 0; i < GetCount; ++i) selected[static_cast<size_t>(i)] = Data1.BookmarkAt(i);
    Data1.SelBookmarks.Replace(selected);
  }

  // From the command to the end of its dialog, whose OK is pressed at once.
  double Get() {
    std::filesystem::remove_all(Target.toStdString());
    QDir().mkpath(Target);
    RunShell("sync");
    QTimer::singleShot(0, &Window, [this] {
      QWidget* dialog = QApplication::activeModalWidget();
      dialog->findChild<controls::DirListBox*>()->SetPath(Target);
      dialog->findChild<QPushButton*>(QStringLiteral("OkBttn"))->click();
    });
    const double time = Milliseconds([this] { Getter.GetPhotos(); });
    if (QDir(Target).entryList(QDir::Files).size() != GetCount) throw std::runtime_error("not copied");
    return time;
  }

 private:
  QString Target;
  OpenedCatalogue Opened;
  catalogue::RecordList Data1;
  QWidget Window;
  controls::LongWork Work{Window};
  output::PhotoGetter Getter;
};

double CopyByCp(const std::string& pictures, const std::string& target) {
  std::filesystem::remove_all(target);
  RunShell("sync");
  return Milliseconds([&] { RunShell("cp -r '" + pictures + "' '" + target + "'"); });
}

}  // namespace

void AddGetFigures(const std::string& data) {
  const auto bench = Lazy([data] {
    const std::string many = MakeManyPictures(data, GetCount);
    std::vector<std::string> pictures;
    for (const auto& file : std::filesystem::directory_iterator(many)) pictures.push_back(file.path());
    const QString directory = QString::fromStdString(data);
    return std::make_unique<GetBench>(MakePictureCatalogue(directory + QStringLiteral("/get"), pictures),
                                      directory + QStringLiteral("/got"));
  });
  AddFigure({"get_1000", "ms", [bench] { return bench().Get(); },
             [data] { return CopyByCp(MakeManyPictures(data, GetCount), data + "/got"); }});
}

}  // namespace veldrin::benches
