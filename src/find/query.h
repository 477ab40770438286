// The query: a dialog that narrows the list of photos, within the selected folder.
#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>

#include "catalogue/record_source.h"

namespace veldrin::find {

/// The criteria as people read them, one a line; empty when none is set.
QStringList DescribeQuery(const catalogue::Criteria& criteria);

class Query {
 public:
  /// Runs a dialog while the picture show, if it is in view, stands still with its music.
  using HoldShow = std::function<void(const std::function<void()>& dialog)>;

  /// The references must outlive the object; `window` has the dialog.
  Query(catalogue::RecordSource& source, const catalogue::RecordList& data1, HoldShow hold, QWidget& window)
      : Source(source), Data1(data1), Hold(std::move(hold)), Window(window) {}

  /// Opens the dialog and applies what it holds. Does nothing on an empty list. Raises the error of criteria
  /// that the engine can't read; the
  /// list stays as it was then.
  void QueryBttn_Click();
  /// The same, with the picture show suspended meanwhile.
  void RecordQuery_Click();

 private:
  catalogue::RecordSource& Source;
  const catalogue::RecordList& Data1;
  HoldShow Hold;
  QWidget& Window;
};

}  // namespace veldrin::find
