#include "output/progress_dialog.h"

namespace veldrin::output {

void frmProg::ShowModal() {
  Form_Load();
  if (WebMode) {
    Pages.MakeWeb(*this);
  } else {
    Pages.MakeReport(*this);
  }
}

void frmProg::Form_Load() {
  constexpr int percent = 100;
  Progress = true;
  SetProgressValue(0);
  SetPercent({});
  Bar.emplace(Work, QStringLiteral("Generating Report...."), percent);
}

void frmProg::DoEvents() {
  if (!Bar->Show(TheValue, Caption)) Progress = false;
}

}  // namespace veldrin::output
