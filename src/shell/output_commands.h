// The commands that hand photos on: pages for the web and for printing, mail, copies.
#pragma once

#include <functional>
#include <utility>

#include "output/get_photos.h"
#include "output/mail.h"
#include "output/reports.h"
#include "output/web_export.h"

namespace veldrin::shell {

/// The parts of `output`, which share the progress dialog and the settings of an export.
struct OutputCommands {
  /// The references must outlive the object; the dialogs stand over `window`. `tell` hears what became of the
  /// photos.
  OutputCommands(catalogue::RecordList& data1, const catalogue::Chooser& chosen,
                 const controls::TreeView& tvTreeView, engine::DBEngine& engine,
                 const catalogue::Paths& paths, QWidget& window, controls::LongWork& work,
                 std::function<void()> popUpReportMenu, const base::TellWork& tell)
      : Web(paths, &window),
        Pages(data1, tvTreeView, paths, Web, window),
        Progress(Pages, work),
        Export(data1, engine, paths, Web, Progress, window, tell),
        Report(data1, paths, Progress, std::move(popUpReportMenu), tell),
        Mail(chosen, engine, paths, window, work, tell),
        Copies(chosen, engine, paths, window, work, tell) {}

  output::frmWeb Web;
  output::WebPages Pages;
  output::frmProg Progress;
  output::WebExport Export;
  output::Reports Report;
  output::PhotoMail Mail;
  output::PhotoGetter Copies;
};

}  // namespace veldrin::shell
