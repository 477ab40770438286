// The query: a dialog that narrows the list of photos, within the selected folder.
#pragma once

#include <QStringList>
#include <QWidget>

#include "catalogue/record_source.h"
#include "find/find_views.h"

namespace veldrin::find {

/// The criteria as people read them, one a line; empty when none is set.
QStringList DescribeQuery(const catalogue::Criteria& criteria);

class Query {
 public:
  /// The references must outlive the object; `window` has the dialog.
  Query(catalogue::RecordSource& source, catalogue::RecordList& data1, FindViews& views, QWidget& window)
      : Source(source), Data1(data1), Views(views), Window(window) {}

  /// Opens the dialog and applies what it holds. Does nothing on an empty list. Raises the error of criteria
  /// that the engine can't read.
  void QueryBttn_Click();
  /// The same, with the picture show suspended meanwhile.
  void RecordQuery_Click();

 private:
  catalogue::RecordSource& Source;
  catalogue::RecordList& Data1;
  FindViews& Views;
  QWidget& Window;
};

}  // namespace veldrin::find
