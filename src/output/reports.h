// The commands that write the list of photos as pages and open them, for printing from the browser.
#pragma once

#include <functional>

#include "output/progress_dialog.h"

namespace veldrin::output {

/// An empty list does nothing and says nothing.
class Reports {
 public:
  /// The references must outlive the object. `popUpReportMenu` shows the menu with the two kinds. `tell`
  /// hears of what failed.
  Reports(const catalogue::RecordList& data1, const catalogue::Paths& paths, frmProg& progress,
          std::function<void()> popUpReportMenu, base::TellWork tell)
      : Data1(data1),
        ThePaths(paths),
        ProgressDialog(progress),
        PopUpReportMenu(std::move(popUpReportMenu)),
        Tell(std::move(tell)) {}

  void PrintBttn_Click();
  // Each raises 53 when the browser can't be started.
  void ReportList_Click() { MakeReport(false); }
  void ReportGallery_Click() { MakeReport(true); }

 private:
  void MakeReport(bool gallery);

  const catalogue::RecordList& Data1;
  const catalogue::Paths& ThePaths;
  frmProg& ProgressDialog;
  std::function<void()> PopUpReportMenu;
  base::TellWork Tell;
};

}  // namespace veldrin::output
