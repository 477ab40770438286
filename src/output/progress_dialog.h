// The progress under which pages are written: it starts the run that its values ask for, and stops it.
#pragma once

#include <optional>

#include "controls/progress.h"
#include "output/web_pages.h"

namespace veldrin::output {

/// `frmProg`: the values that callers set and generators read. Its window is the progress's.
class frmProg : public ProgressForm {
 public:
  /// The references must outlive the object.
  frmProg(WebPages& pages, controls::LongWork& work) : Pages(pages), Work(work) {}

  /// Returns when the run is over.
  void ShowModal();
  /// What became of the photos of that run.
  const base::WorkReport& Report() const { return Pages.Report(); }

  float ProgressValue() const override { return TheValue; }
  void SetProgressValue(float value) override { TheValue = value; }
  void SetPercent(const QString& caption) override { Caption = caption; }
  void DoEvents() override;
  void Beside(const std::function<void()>& work) override { Bar->Run(work); }
  void Unload() override { Bar.reset(); }

 private:
  void Form_Load();

  WebPages& Pages;
  controls::LongWork& Work;
  std::optional<controls::Progress> Bar;
  float TheValue = 0;
  QString Caption;
};

}  // namespace veldrin::output
