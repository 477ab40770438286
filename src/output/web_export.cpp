#include "output/web_export.h"

#include "controls/msg_box.h"
#include "output/browser.h"

namespace veldrin::output {

void WebExport::WebBttn_Click() {
  if (Data1.SelBookmarks.Count() == 0) {
    controls::MsgBox(&Window, QStringLiteral("Must select records to make web page(s)!"),
                     controls::vbExclamation, QStringLiteral("Information"));
    return;
  }
  Web.ShowModal();
  if (!Web.WebOK) return;
  ProgressDialog.WebMode = true;
  ProgressDialog.WebTitle = Web.WebTitle;
  ProgressDialog.Gallery = Web.PageType;
  ProgressDialog.ShowModal();
  ShowPageInBrowser(ThePaths.BrowserPath, Web.WebDir + QLatin1Char('/'), Web.PageType != 0);
}

}  // namespace veldrin::output
