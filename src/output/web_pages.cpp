#include "output/web_pages.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QWidget>
#include <algorithm>
#include <new>
#include <optional>

#include "base/runtime_error.h"
#include "controls/progress_window.h"
#include "output/page_names.h"
#include "output/page_writer.h"
#include "output/web_directory.h"

namespace veldrin::output {

namespace {

constexpr int PhotosPerRow = 4;
constexpr int RowsPerGalleryPage = 3;
constexpr int PhotosPerGalleryPage = PhotosPerRow * RowsPerGalleryPage;
constexpr int PhotosPerListPage = 25;

// A row that another machine has deleted since the list was read.
bool IsGone(const base::RuntimeError& error) {
  return error.Number() == base::errRecordDeleted || error.Number() == base::errNoCurrentRecord;
}

// One run through the photos of a destination. A page has its share of them, less those that have gone, so
// that the links between the pages stay right.
class PageRun {
 public:
  PageRun(PageDestination& destination, ProgressForm& form, base::WorkReport& report)
      : Destination(destination), Form(form), Report(report), Count(destination.Count()) {}

  void WritePages() {
    const auto ahead = qScopeGuard([this] { Destination.RemoveAhead(); });
    const int perPage = Destination.IsGallery() ? PhotosPerGalleryPage : PhotosPerListPage;
    const int pages = Count / perPage + (Count % perPage > 0 ? 1 : 0);
    for (int page = 1; page <= pages && !Ended; ++page) {
      const int begin = (page - 1) * perPage;
      End = std::min(begin + perPage, Count);
      OnPage = 0;
      const size_t failuresBefore = Report.Failures.size();
      try {
        WritePage(page, pages);
      } catch (const base::RuntimeError& error) {
        Report.Failures.resize(failuresBefore);
        EndAt(begin, ReasonOf(error));
      }
    }
  }

 private:
  // One that a failure left without photos doesn't come to be.
  void WritePage(int page, int pages) {
    PageWriter file(Destination.Directory() + PageName(Destination.IsGallery(), page));
    file.Print(Destination.Head());
    if (Destination.IsGallery()) {
      WriteGallery(file);
    } else {
      WriteList(file);
    }
    file.Print(NavigationLines(Destination.IsGallery(), page, pages));
    file.Print({QStringLiteral("</body>"), QStringLiteral("</html>")});
    if (Ended && OnPage == 0) return;
    file.Close();
    Report.Done += OnPage;
  }

  void WriteGallery(PageWriter& file) {
    for (int row = 0; row < RowsPerGalleryPage && Fetch(); ++row) WriteGalleryRow(file);
  }

  void WriteGalleryRow(PageWriter& file) {
    file.Print({QStringLiteral(R"(<table border="0" width="100%">)"), QStringLiteral("<tr>")});
    QStringList captions;
    while (captions.size() < PhotosPerRow && Fetch()) {
      file.Print(PictureCell(*Next));
      captions << CaptionCell(*Next);
      Advance();
    }
    file.Print({QStringLiteral("</tr>"), QStringLiteral("<tr>")});
    file.Print(captions);
    file.Print({QStringLiteral("</tr>"), QStringLiteral("</table>")});
  }

  void WriteList(PageWriter& file) {
    file.Print(ListHeadLines());
    while (Fetch()) {
      file.Print(ListRowLines(*Next));
      Advance();
    }
    file.Print(QStringLiteral("</table>"));
  }

  // The page's next photo; false where it has no other, and once the run has ended.
  bool Fetch() {
    while (!Next && Index < End && !Ended) {
      try {
        Next = Destination.Take(Index);
        ++OnPage;
      } catch (const base::RuntimeError& error) {
        if (IsGone(error)) {
          Note(Index, QStringLiteral("deleted by another machine"));
          Advance();
        } else {
          EndAt(Index, ReasonOf(error));
        }
      }
    }
    return Next.has_value();
  }

  // Tells of the photo that was written, or has gone.
  void Advance() {
    Next.reset();
    Form.SetProgressValue(static_cast<float>((Index + 1.0) / Count * 100));
    Form.SetPercent(controls::PercentText(Form.ProgressValue()));
    Form.DoEvents();
    ++Index;
    if (Form.Progress) return;
    Ended = true;
    Report.Stopped = Index < Count;
  }

  void Note(int index, const QString& reason) {
    Report.Failures.push_back({QStringLiteral("Photo %1").arg(Destination.NumberAt(index)), reason});
  }

  // Ends the run for a reason that lies in a photo or in the page that begins with it.
  void EndAt(int index, const QString& reason) {
    Ended = true;
    Note(index, reason);
    while (++index < Count) Note(index, QStringLiteral("not written"));
  }

  PageDestination& Destination;
  ProgressForm& Form;
  base::WorkReport& Report;
  int Count;
  int Index = 0;
  int End = 0;                     ///< of the page: the place of the next one's first photo
  int OnPage = 0;                  ///< how many photos the page in hand has
  std::optional<PhotoEntry> Next;  ///< of the photo at Index, with its files in place
  bool Ended = false;              ///< by a stop or a failure
};

}  // namespace

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
  const QString name = QFileInfo(Web.WebDir).fileName();
  Run(frm, QStringLiteral("written to the web '%1'").arg(name), [&] {
    WebDestination web(Data1, ThePaths, frm, gallery, Window.devicePixelRatioF(), Web.WebDir, title);
    PageRun(web, frm, TheReport).WritePages();
  });
}

void WebPages::MakeReportPages(ProgressForm& frm, bool gallery) {
  DeleteFiles(ThePaths.TempDir, PagePrefix(gallery) + QStringLiteral("*.htm"));
  if (Data1.RecordCount() == 0) return;
  Run(frm, QStringLiteral("written to the report"), [&] {
    const controls::Node* folder = Tree.SelectedItem();
    if (folder == nullptr)
      throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
    ReportDestination report(Data1, ThePaths, frm, gallery, Window.devicePixelRatioF(), folder->FullPath());
    PageRun(report, frm, TheReport).WritePages();
  });
}

void WebPages::Run(ProgressForm& frm, const QString& deed, const std::function<void()>& writePages) {
  TheReport = {QStringLiteral("photos"), deed, 0, {}, false};
  try {
    writePages();
  } catch (const base::RuntimeError& error) {
    TheReport.Failures.push_back({QStringLiteral("All pages"), ReasonOf(error)});
  } catch (const std::bad_alloc&) {
    TheReport.Failures.push_back({QStringLiteral("The rest"), QStringLiteral("Out of memory")});
  }
  frm.Progress = false;
  frm.Unload();
}

}  // namespace veldrin::output
