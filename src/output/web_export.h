// The command that writes the selected photos as pages for the web.
#pragma once

#include "output/progress_dialog.h"
#include "output/web_dialog.h"

namespace veldrin::output {

class WebExport {
 public:
  /// The references must outlive the object; `window` has the message. The dialogs belong together:
  /// `frmProg` runs generators that read `frmWeb`'s settings.
  WebExport(catalogue::RecordList& data1, engine::DBEngine& engine, const catalogue::Paths& paths,
            frmWeb& web, frmProg& progress, QWidget& window, base::TellWork tell)
      : Data1(data1),
        Engine(engine),
        ThePaths(paths),
        Web(web),
        ProgressDialog(progress),
        Window(window),
        Tell(std::move(tell)) {}

  /// Asks for the settings, writes the pages, tells of them and opens the first. Raises 53 when the browser
  /// can't be started.
  void WebBttn_Click();

 private:
  void LeaveOutChanged(catalogue::Choice& choice);

  catalogue::RecordList& Data1;
  engine::DBEngine& Engine;
  const catalogue::Paths& ThePaths;
  frmWeb& Web;
  frmProg& ProgressDialog;
  QWidget& Window;
  base::TellWork Tell;
};

}  // namespace veldrin::output
