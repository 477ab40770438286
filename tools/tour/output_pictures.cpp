// The pictures of the pages that are written, and of their dialogs.
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "output/page_names.h"
#include "output/progress_dialog.h"
#include "output/web_dialog.h"
#include "output/web_directory.h"
#include "tour/tour.h"

namespace veldrin::tour {

namespace {

constexpr int ExportedPhotos = 18;

// The progress in the middle of a run, as soon as it takes long enough to be shown, over each view.
void SaveProgress(Tour& tour, controls::LongWork& work) {
  for (const char* view : {"MainData", "MainImage", "MainForm", "MainAdd", "MainPlay"}) {
    tour.Choose(view);
    Tour::WaitForPictures();
    controls::Progress progress(work, QStringLiteral("Generating Report...."), ExportedPhotos);
    QWidget* window = nullptr;
    while (window == nullptr) {
      progress.Step(ExportedPhotos / 3);
      window = tour.Window().findChild<QWidget*>(QStringLiteral("frmProg"));
    }
    tour.SaveOver(*window, qPrintable(QStringLiteral("17-progress-%1").arg(QLatin1String(view + 4))));
  }
  tour.Choose("MainData");
}

// A page as Chromium shows it, where that is installed.
void SavePage(Tour& tour, const QString& page, const char* name) {
  const QString browser = QStandardPaths::findExecutable(QStringLiteral("chromium"));
  if (browser.isEmpty()) return;
  const QString picture = tour.Paths().TempDir + QStringLiteral("page.png");
  QProcess::execute(
      browser, {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"), QStringLiteral("--disable-gpu"),
                QStringLiteral("--disable-dev-shm-usage"), QStringLiteral("--window-size=900,760"),
                QStringLiteral("--log-level=3"),
                QStringLiteral("--user-data-dir=") + tour.Paths().TempDir + QStringLiteral("browser"),
                QStringLiteral("--screenshot=") + picture, page});
  tour.Save(QPixmap(picture), name);
}

}  // namespace

void TakeOutputPictures(Tour& tour) {
  catalogue::RecordList list(tour.Engine());
  list.DatabaseName = tour.Paths().WorkFile;
  list.RecordSource = QStringLiteral("tblPhotos");
  list.Refresh();
  std::vector<int> photos;
  photos.reserve(ExportedPhotos);
  for (int i = 0; i < std::min(ExportedPhotos, list.RecordCount()); ++i) photos.push_back(list.BookmarkAt(i));
  list.SelBookmarks.Replace(std::move(photos));

  output::frmWeb web(tour.Paths(), &tour.Window());
  web.LastDir = tour.Photographs();
  output::WebPages pages(list, tour.Tree(), tour.Paths(), web, tour.Window());
  controls::LongWork work(tour.Window());
  output::frmProg progress(pages, work);
  tour.SaveModal("16-web", [&web] { web.ShowModal(); });
  web.WebDir = tour.Paths().TempDir + QStringLiteral("Web");
  progress.WebMode = true;
  progress.WebTitle = QStringLiteral("PHOTO IMAGES");
  output::MakeWebDirectories(web.WebDir, true);
  SaveProgress(tour, work);
  for (const bool gallery : {true, false}) {
    progress.Gallery = gallery ? 1 : 0;
    progress.ShowModal();
    SavePage(tour, web.WebDir + QLatin1Char('/') + output::PageName(gallery, 1),
             gallery ? "18-gallery-page" : "18-list-page");
  }
}

}  // namespace veldrin::tour
