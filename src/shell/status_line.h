// The line at the window's lower edge: what took effect last, and how much the list holds.
#pragma once

#include <QLabel>
#include <QStatusBar>

#include "base/work_report.h"
#include "catalogue/record_list.h"

namespace veldrin::shell {

/// `StatusLine`.
class StatusLine : public QStatusBar {
 public:
  /// The list must outlive the line.
  StatusLine(const catalogue::RecordList& data1, QWidget* parent);

  /// Says what was done, until the next time, and in a box what wasn't.
  void Tell(const base::WorkReport& report);

 private:
  void ShowCounts();

  const catalogue::RecordList& Data1;
  // Not the bar's own message, which the tip of any button takes away.
  QLabel* lblWork;
  QLabel* lblCounts;
};

/// "1,234 photos", or with a selection "1,234 photos, 3 selected"; numbers as the user's country writes them.
QString CountsText(int photos, int selected);

}  // namespace veldrin::shell
