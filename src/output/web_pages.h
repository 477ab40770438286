// The page generators: thumbnails or a list, of the selected photos into a web directory or of all photos
// into the directory of temporary files.
#pragma once

#include <functional>

#include "base/work_report.h"
#include "output/page_destination.h"
#include "output/progress_form.h"
#include "output/web_settings.h"

namespace veldrin::output {

/// Each run tells the form of every photo, ends at a stop with the page in hand, and unloads the form at its
/// end. A photo that another machine has deleted is passed over. Any other failure ends the run: the page in
/// hand is finished with the photos that it has, where that can be done. The list stands on the same record
/// before and after.
class WebPages {
 public:
  /// The references must outlive the object. `web` tells the web directory, `window` the screen for which
  /// thumbnails are made.
  WebPages(catalogue::RecordList& data1, const controls::TreeView& tvTreeView, const catalogue::Paths& paths,
           const WebSettings& web, const QWidget& window)
      : Data1(data1), Tree(tvTreeView), ThePaths(paths), Web(web), Window(window) {}

  // The run that the form's values ask for.
  void MakeWeb(ProgressForm& frm);
  void MakeReport(ProgressForm& frm);

  void MakeWebGallery(ProgressForm& frm, const QString& title) { MakeWebPages(frm, true, title); }
  void MakeWebList(ProgressForm& frm, const QString& title) { MakeWebPages(frm, false, title); }
  /// An empty list is not for these two: they leave the form alone then.
  void MakeReportGallery(ProgressForm& frm) { MakeReportPages(frm, true); }
  void MakeReportList(ProgressForm& frm) { MakeReportPages(frm, false); }

  /// What became of the photos in the last run.
  const base::WorkReport& Report() const { return TheReport; }

 private:
  void MakeWebPages(ProgressForm& frm, bool gallery, const QString& title);
  void MakeReportPages(ProgressForm& frm, bool gallery);
  void Run(ProgressForm& frm, const QString& deed, const std::function<void()>& writePages);

  catalogue::RecordList& Data1;
  const controls::TreeView& Tree;
  const catalogue::Paths& ThePaths;
  const WebSettings& Web;
  const QWidget& Window;
  base::WorkReport TheReport;
};

}  // namespace veldrin::output
