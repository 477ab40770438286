// Showing a page of thumbnails.

#include <QCoreApplication>
#include <QDir>
#include <QWidget>

#include "benches/catalogue_maker.h"
#include "benches/figure.h"
#include "benches/picture_maker.h"
#include "browse/thumbnail_page.h"
#include "catalogue/image_store.h"
#include "catalogue/record_list.h"

namespace veldrin::benches {

namespace {

constexpr int PageLength = 12;

// The page as Image View has it, over the large pictures. Made at the first measurement, kept for the others.
class PageBench {
 public:
  explicit PageBench(const std::string& data)
      : Pictures(MakeLargePictures(data, PageLength)),
        Thumbnails(data + "/reference-thumbnails"),
        Opened(MakePictureCatalogue(QString::fromStdString(data + "/page"), Pictures)),
        Data1(Opened.Engine()),
        Page(Data1, Opened.Engine(), Opened.Paths(), &Tab) {
    Tab.resize(800, 600);
    Page.resize(Tab.size());
    Tab.show();
    Data1.DatabaseName = Opened.Paths().WorkFile;
    Data1.RecordSource = QStringLiteral("SELECT tblPhotos.* FROM tblPhotos");
    Data1.Refresh();
  }

  double ShowCold() {
    QDir(Opened.Paths().ThumbDir).removeRecursively();
    QDir().mkpath(Opened.Paths().ThumbDir);
    return ShowWarm();
  }

  double ShowWarm() {
    const double time = Milliseconds([&] {
      Page.ShowThumbnails(0);
      while (!Page.IsComplete()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
    const auto made = QDir(Opened.Paths().ThumbDir).entryList(QDir::Files).size();
    if (made != PageLength) throw std::runtime_error("thumbnails made: " + std::to_string(made));
    return time;
  }

  double RunVips() const {
    RunShell("rm -rf '" + Thumbnails + "' && mkdir '" + Thumbnails + "'");
    std::string command = "vipsthumbnail --size 169x129 -o '" + Thumbnails + "/%s.jpg'";
    for (const std::string& picture : Pictures) command += " '" + picture + "'";
    return Milliseconds([&] { RunShell(command); });
  }

  double LoadBitmaps() {
    ShowWarm();
    return Milliseconds([&] {
      for (int photo = 1; photo <= PageLength; ++photo) {
        if (QImage(catalogue::ThumbFileName(Opened.Paths(), photo)).isNull())
          throw std::runtime_error("no bitmap");
      }
    });
  }

 private:
  std::vector<std::string> Pictures;
  std::string Thumbnails;
  OpenedCatalogue Opened;
  QWidget Tab;
  catalogue::RecordList Data1;
  browse::ThumbnailPage Page;
};

}  // namespace

void AddPageFigures(const std::string& data) {
  const auto page = Lazy([data] { return std::make_unique<PageBench>(data); });
  AddFigure(
      {"page_cold_24mp", "ms", [page] { return page().ShowCold(); }, [page] { return page().RunVips(); }, 7});
  AddFigure(
      {"page_warm", "ms", [page] { return page().ShowWarm(); }, [page] { return page().LoadBitmaps(); }, 25});
}

}  // namespace veldrin::benches
