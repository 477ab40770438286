#include "output/reports.h"

#include "output/browser.h"

namespace veldrin::output {

void Reports::PrintBttn_Click() {
  if (Data1.RecordCount() != 0) PopUpReportMenu();
}

void Reports::MakeReport(bool gallery) {
  if (Data1.RecordCount() == 0) return;
  ProgressDialog.WebMode = false;
  ProgressDialog.Gallery = gallery ? 1 : 0;
  ProgressDialog.ShowModal();
  if (!ProgressDialog.Report().Failures.empty()) Tell(ProgressDialog.Report());
  ShowPageInBrowser(ThePaths.BrowserPath, ThePaths.TempDir, gallery);
}

}  // namespace veldrin::output
