#include "output/web_pages.h"

#include <QWidget>

#include "base/failure.h"
#include "base/runtime_error.h"
#include "output/page_names.h"
#include "output/page_writer.h"
#include "output/web_directory.h"

namespace veldrin::output {

namespace {

constexpr int PhotosPerRow = 4;
constexpr int RowsPerGalleryPage = 3;
constexpr int PhotosPerGalleryPage = PhotosPerRow * RowsPerGalleryPage;
constexpr int PhotosPerListPage = 25;

// One run through the photos of a destination.
class PageRun {
 public:
  PageRun(PageDestination& destination, ProgressForm& form)
      : Destination(destination), Form(form), Count(destination.Count()) {}

  void WritePages() {
    const int perPage = Destination.IsGallery() ? PhotosPerGalleryPage : PhotosPerListPage;
    const int pages = Count / perPage + (Count % perPage > 0 ? 1 : 0);
    for (int page = 1; page <= pages; ++page) {
      PageWriter file(Destination.Directory() + PageName(Destination.IsGallery(), page));
      file.Print(Destination.Head());
      if (Destination.IsGallery()) {
        WriteGallery(file);
      } else {
        WriteList(file);
      }
      file.Print(NavigationLines(Destination.IsGallery(), page, pages));
      file.Print({QStringLiteral("</body>"), QStringLiteral("</html>")});
      file.Close();
      if (!Form.Progress) return;
    }
  }

 private:
  void WriteGallery(PageWriter& file) {
    int rows = 0;
    do {
      WriteGalleryRow(file);
      ++rows;
    } while (rows < RowsPerGalleryPage && Index < Count && Form.Progress);
  }

  void WriteGalleryRow(PageWriter& file) {
    file.Print({QStringLiteral(R"(<table border="0" width="100%">)"), QStringLiteral("<tr>")});
    QStringList captions;
    bool more = true;
    while (more && captions.size() < PhotosPerRow) {
      const PhotoEntry photo = Destination.Take(Index);
      file.Print(PictureCell(photo));
      captions << CaptionCell(photo);
      more = Advance();
    }
    file.Print({QStringLiteral("</tr>"), QStringLiteral("<tr>")});
    file.Print(captions);
    file.Print({QStringLiteral("</tr>"), QStringLiteral("</table>")});
  }

  void WriteList(PageWriter& file) {
    file.Print(ListHeadLines());
    int rows = 0;
    do {
      file.Print(ListRowLines(Destination.Take(Index)));
      ++rows;
    } while (Advance() && rows < PhotosPerListPage);
    file.Print(QStringLiteral("</table>"));
  }

  // Tells of the photo that was written; whether another may follow.
  bool Advance() {
    Form.SetProgressValue(static_cast<float>((Index + 1.0) / Count * 100));
    Form.SetPercent(PercentText(Form.ProgressValue()));
    Form.DoEvents();
    if (!Form.Progress) return false;
    ++Index;
    return Index < Count;
  }

  PageDestination& Destination;
  ProgressForm& Form;
  int Count;
  int Index = 0;
};

}  // namespace

QString PercentText(float value) {
  constexpr int digits = 7;
  return QString::number(static_cast<double>(value), 'g', digits) + QLatin1Char('%');
}

void WebPages::MakeWeb(ProgressForm& frm) {
  if (frm.Gallery != 0) {
    MakeWebGallery(frm, frm.WebTitle);
  } else {
    MakeWebList(frm, frm.WebTitle);
  }
}

void WebPages::MakeReport(ProgressForm& frm) {
  if (frm.Gallery != 0) {
    MakeReportGallery(frm);
  } else {
    MakeReportList(frm);
  }
}

void WebPages::MakeWebPages(ProgressForm& frm, bool gallery, const QString& title) {
  Run(frm, [&] {
    WebDestination web(Data1, ThePaths, gallery, Window.devicePixelRatioF(), Web.WebDir, title);
    PageRun(web, frm).WritePages();
  });
}

void WebPages::MakeReportPages(ProgressForm& frm, bool gallery) {
  DeleteFiles(ThePaths.TempDir, PagePrefix(gallery) + QStringLiteral("*.htm"));
  if (Data1.RecordCount() == 0) return;
  Run(frm, [&] {
    const controls::Node* folder = Tree.SelectedItem();
    if (folder == nullptr)
      throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
    ReportDestination report(Data1, ThePaths, gallery, Window.devicePixelRatioF(), folder->FullPath());
    PageRun(report, frm).WritePages();
  });
}

void WebPages::Run(ProgressForm& frm, const std::function<void()>& writePages) {
  base::EndSilently(writePages);
  frm.Progress = false;
  frm.Unload();
}

}  // namespace veldrin::output
