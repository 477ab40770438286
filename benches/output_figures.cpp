// Writing pages: an export of pictures, and a report of a long list.

#include <QDir>
#include <QFile>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "catalogue/image_store.h"
#include "output/page_names.h"
#include "output/progress_dialog.h"
#include "output/web_directory.h"

namespace veldrin::benches {

namespace {

constexpr int ExportedPhotos = 1000;
constexpr CatalogueSize ReportedCatalogue{100'000, 500};
constexpr int PhotosPerPage = 25;
constexpr int ReportedPages = ReportedCatalogue.Photos / PhotosPerPage;

// The generators in their dialog, as the commands have them.
class OutputBench {
 public:
  explicit OutputBench(const QString& program)
      : Opened(program),
        Data1(Opened.Engine()),
        Pages(Data1, Tree, Opened.Paths(), Web, Window),
        Work(Window),
        Dialog(Pages, Work) {
    Tree.Select(Tree.Add(nullptr, QStringLiteral("Photos")));
    Data1.DatabaseName = Opened.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("tblPhotos");
    Data1.Refresh();
  }

 protected:
  OpenedCatalogue Opened;
  controls::TreeView Tree;
  catalogue::RecordList Data1;
  output::WebSettings Web;
  QWidget Window;
  output::WebPages Pages;
  controls::LongWork Work;
  output::frmProg Dialog;
};

std::vector<std::string> PathsBelow(const std::string& directory) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

// A program directory with pictures and their thumbnails, made once.
QString MakeExportCatalogue(const std::string& data) {
  const QString program = QString::fromStdString(data + "/export");
  catalogue::Paths paths;
  paths.ImageDir = program + QStringLiteral("/Database/Images/");
  paths.ThumbDir = paths.ImageDir + QStringLiteral("Thumbnails/");
  if (QFile::exists(catalogue::ThumbFileName(paths, ExportedPhotos))) return program;
  MakePictureCatalogue(program, PathsBelow(MakeManyPictures(data, ExportedPhotos)));
  catalogue::CreateThumbnail(paths, 1, QStringLiteral("jpg"), 1);
  for (int photo = 2; photo <= ExportedPhotos; ++photo)
    QFile::copy(catalogue::ThumbFileName(paths, 1), catalogue::ThumbFileName(paths, photo));
  return program;
}

class ExportBench : public OutputBench {
 public:
  explicit ExportBench(const std::string& data)
      : OutputBench(MakeExportCatalogue(data)), Targets(data + "/exported") {
    std::filesystem::remove_all(Targets);
    std::filesystem::create_directory(Targets);
    std::vector<int> photos;
    photos.reserve(ExportedPhotos);
    for (int photo = 1; photo <= ExportedPhotos; ++photo) photos.push_back(photo);
    Data1.SelBookmarks.Replace(std::move(photos));
  }
  ~ExportBench() { std::filesystem::remove_all(Targets); }
  ExportBench(const ExportBench&) = delete;
  ExportBench& operator=(const ExportBench&) = delete;

  double Export() {
    const std::string target = NewTarget();
    Web.WebDir = QString::fromStdString(target);
    output::MakeWebDirectories(Web.WebDir, true);
    Dialog.WebMode = true;
    Dialog.Gallery = 1;
    RunShell("sync");
    const double time = Milliseconds([this] { Dialog.ShowModal(); });
    const auto copies = PathsBelow(target + "/Images").size() + PathsBelow(target + "/Thumbnails").size();
    if (copies != 2 * ExportedPhotos) throw std::runtime_error("copied " + std::to_string(copies));
    return time;
  }

  double Copy() {
    const std::string target = NewTarget();
    RunShell("sync");
    return Milliseconds(
        [&] { RunShell("cp -r '" + Opened.Paths().ImageDir.toStdString() + "' '" + target + "'"); });
  }

 private:
  // A file system may be slow at making files where others were just deleted, so that each run has a
  // directory of its own until the end.
  std::string NewTarget() { return Targets + "/" + std::to_string(++Runs); }

  std::string Targets;
  int Runs = 0;
};

class ReportBench : public OutputBench {
 public:
  using OutputBench::OutputBench;

  // Pages a second.
  double Report() {
    ForgetPeak();
    const double before = ResidentMegabytes();
    const double time = Milliseconds([this] { Dialog.ShowModal(); });
    Growth = PeakMegabytes() - before;
    if (!QFile::exists(Page(ReportedPages))) throw std::runtime_error("pages are missing");
    return ReportedPages * 1000 / time;
  }

  // The same bytes, in as many files.
  double WriteBytes() {
    if (!QFile::exists(Page(1))) Report();
    QFile page(Page(1));
    if (!page.open(QIODevice::ReadOnly)) throw std::runtime_error("no page");
    const QByteArray bytes = page.readAll();
    const QString copies = Opened.Paths().TempDir + QStringLiteral("copies/");
    QDir(copies).removeRecursively();
    QDir().mkdir(copies);
    const double time = Milliseconds([&] {
      for (int i = 0; i < ReportedPages; ++i) {
        QFile copy(copies + QString::number(i));
        if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size())
          throw std::runtime_error("can't write");
      }
    });
    return ReportedPages * 1000 / time;
  }

  double PeakGrowth() {
    Report();
    return Growth;
  }

 private:
  QString Page(int number) const { return Opened.Paths().TempDir + output::PageName(false, number); }

  double Growth = 0;
};

}  // namespace

void AddOutputFigures(const std::string& data) {
  const auto exported = Lazy([data] { return std::make_unique<ExportBench>(data); });
  AddFigure({"web_export_1000", "ms", [exported] { return exported().Export(); },
             [exported] { return exported().Copy(); }, 3});
  const auto report = Lazy([data] {
    return std::make_unique<ReportBench>(MakeCatalogue(QString::fromStdString(data), ReportedCatalogue));
  });
  AddFigure({"report_list_100k", "pages/s", [report] { return report().Report(); },
             [report] { return report().WriteBytes(); }, 3});
  AddFigure({"report_list_100k_growth", "MB", [report] { return report().PeakGrowth(); }, {}, 1});
}

}  // namespace veldrin::benches
