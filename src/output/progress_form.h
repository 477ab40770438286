// What a page generator knows of the dialog that it runs in.
#pragma once

#include <QString>
#include <functional>

namespace veldrin::output {

class ProgressForm {
 public:
  ProgressForm() = default;
  virtual ~ProgressForm() = default;
  ProgressForm(const ProgressForm&) = delete;
  ProgressForm& operator=(const ProgressForm&) = delete;

  bool WebMode = false;   ///< an export to the web directory, otherwise a report
  QString WebTitle;       ///< of an export
  int Gallery = 0;        ///< not 0: thumbnails, otherwise a list
  bool Progress = false;  ///< true while the run may go on

  /// The bar's, from 0 to 100.
  virtual float ProgressValue() const = 0;
  virtual void SetProgressValue(float value) = 0;
  virtual void SetPercent(const QString& caption) = 0;
  /// Lets the pending events run: where a stop takes effect.
  virtual void DoEvents() = 0;
  /// Does what takes long beside the window, which lives on meanwhile, and raises what it raises.
  virtual void Beside(const std::function<void()>& work) = 0;
  virtual void Unload() = 0;
};

}  // namespace veldrin::output
