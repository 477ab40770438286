#include "output/web_export.h"

#include "controls/msg_box.h"
#include "output/browser.h"
#include "output/record_choice.h"

namespace veldrin::output {

void WebExport::WebBttn_Click() {
  if (Data1.SelBookmarks.Count() == 0) {
    controls::MsgBox(&Window, QStringLiteral("Must select records to make web page(s)!"),
                     controls::vbExclamation, QStringLiteral("Information"));
    return;
  }
  // The pages are of the selection: what has become another photo leaves it.
  std::vector<int> photos;
  for (const auto& photo : TakePhotos(*Engine.OpenDatabase(ThePaths.WorkFile), Data1.Chosen(true), Window))
    photos.push_back(photo.PhotoID);
  if (photos.size() != static_cast<size_t>(Data1.SelBookmarks.Count()))
    Data1.SelBookmarks.Replace(std::move(photos));
  if (Data1.SelBookmarks.Count() == 0) return;
  Web.ShowModal();
  if (!Web.WebOK) return;
  ProgressDialog.WebMode = true;
  ProgressDialog.WebTitle = Web.WebTitle;
  ProgressDialog.Gallery = Web.PageType;
  ProgressDialog.ShowModal();
  Tell(ProgressDialog.Report());
  ShowPageInBrowser(ThePaths.BrowserPath, Web.WebDir + QLatin1Char('/'), Web.PageType != 0);
}

}  // namespace veldrin::output
