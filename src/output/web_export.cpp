#include "output/web_export.h"

#include <algorithm>

#include "controls/msg_box.h"
#include "output/browser.h"
#include "output/record_choice.h"

namespace veldrin::output {

// The pages are of the selection: what has become another photo leaves it.
void WebExport::LeaveOutChanged(catalogue::Choice& choice) {
  std::vector<int> photos;
  for (const auto& photo : TakePhotos(*Engine.OpenDatabase(ThePaths.WorkFile), choice, Window))
    photos.push_back(photo.PhotoID);
  std::erase_if(choice.Photos, [&](const catalogue::ChosenPhoto& photo) {
    return std::ranges::find(photos, photo.PhotoID) == photos.end();
  });
  if (photos.size() != static_cast<size_t>(Data1.SelBookmarks.Count()))
    Data1.SelBookmarks.Replace(std::move(photos));
}

void WebExport::WebBttn_Click() {
  if (Data1.SelBookmarks.Count() == 0) {
    controls::MsgBox(&Window, QStringLiteral("Must select records to make web page(s)!"),
                     controls::vbExclamation, QStringLiteral("Information"));
    return;
  }
  catalogue::Choice choice = Data1.Chosen(true);
  LeaveOutChanged(choice);
  if (Data1.SelBookmarks.Count() == 0) return;
  Web.ShowModal();
  if (!Web.WebOK) return;
  LeaveOutChanged(choice);
  if (Data1.SelBookmarks.Count() == 0) return;
  ProgressDialog.WebMode = true;
  ProgressDialog.WebTitle = Web.WebTitle;
  ProgressDialog.Gallery = Web.PageType;
  ProgressDialog.ShowModal();
  Tell(ProgressDialog.Report());
  if (ProgressDialog.Report().Done == 0) return;
  ShowPageInBrowser(ThePaths.BrowserPath, Web.WebDir + QLatin1Char('/'), Web.PageType != 0);
}

}  // namespace veldrin::output
